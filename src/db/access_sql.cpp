#include "db/access_sql.h"

#include <QDate>
#include <QHash>
#include <QSet>
#include <QStringList>
#include <QTime>

#include "db/sql_tokenizer.h"

namespace lorvane::db {

using namespace Qt::StringLiterals;

namespace {

// Words that can never stand for a column or table name, so that a statement
// such as "WHERE codLocale al.IN (" stops at the first word out of place.
const QSet<QString>& reservedWords() {
    static const QSet<QString> words = {
        u"SELECT"_s, u"FROM"_s,     u"WHERE"_s,       u"GROUP"_s, u"ORDER"_s, u"HAVING"_s,
        u"UNION"_s,  u"AND"_s,      u"OR"_s,          u"NOT"_s,   u"ON"_s,    u"JOIN"_s,
        u"INNER"_s,  u"LEFT"_s,     u"RIGHT"_s,       u"OUTER"_s, u"AS"_s,    u"IN"_s,
        u"IS"_s,     u"BETWEEN"_s,  u"LIKE"_s,        u"BY"_s,    u"INTO"_s,  u"VALUES"_s,
        u"SET"_s,    u"DISTINCT"_s, u"DISTINCTROW"_s, u"TOP"_s,   u"MOD"_s,   u"INSERT"_s,
        u"UPDATE"_s, u"DELETE"_s,   u"EXISTS"_s,      u"ASC"_s,   u"DESC"_s,  u"ALL"_s,
    };
    return words;
}

const QSet<QString>& aggregateFunctions() {
    static const QSet<QString> names = {u"SUM"_s,    u"COUNT"_s, u"AVG"_s,  u"MIN"_s,
                                        u"MAX"_s,    u"FIRST"_s, u"LAST"_s, u"STDEV"_s,
                                        u"STDEVP"_s, u"VAR"_s,   u"VARP"_s};
    return names;
}

QString quoteName(QString name) {
    name.replace(u'"', u"\"\""_s);
    return u'"' + name + u'"';
}

QString quoteString(QString value) {
    value.replace(u'\'', u"''"_s);
    return u'\'' + value + u'\'';
}

enum class Literal { None, Number, String, Date, Null };

// One translated expression, with what the callers need to know of it.
struct Expr {
    QString sql;
    Literal literal = Literal::None;
    QString value;       // of a literal: the number's text, the string, or the ISO date
    QString columnName;  // of a plain column reference: its last part
    bool aggregate = false;
};

// Where a SELECT reads from, for the decision whether it can be written back.
struct SelectShape {
    bool singleTable = false;  // one table, no join, no derived table
    bool grouped = false;      // DISTINCT, GROUP BY, HAVING, an aggregate or UNION
    QString table;
    QString alias;
    QString head;  // "SELECT " and what precedes the select list
    QString list;  // the select list
    QString rest;  // everything after the select list
};

int parseInt(const QString& text, bool* ok) { return text.toInt(ok); }

QTime parseTimePart(QString text, bool* ok) {
    *ok = false;
    text = text.trimmed().toUpper();
    int addHours = 0;
    bool twelveHour = false;
    if (text.endsWith(u"AM"_s) || text.endsWith(u"PM"_s)) {
        twelveHour = true;
        if (text.endsWith(u"PM"_s)) addHours = 12;
        text = text.left(text.size() - 2).trimmed();
    }
    const QStringList parts = text.split(u':');
    if (parts.size() < 2 || parts.size() > 3) return {};
    bool okH = false, okM = false, okS = true;
    int h = parseInt(parts[0], &okH);
    const int m = parseInt(parts[1], &okM);
    const int s = parts.size() == 3 ? parseInt(parts[2], &okS) : 0;
    if (!okH || !okM || !okS) return {};
    if (twelveHour) {
        if (h < 1 || h > 12) return {};
        h = h % 12 + addHours;
    }
    const QTime time(h, m, s);
    *ok = time.isValid();
    return time;
}

int expandYear(const QString& text, bool* ok) {
    const int year = parseInt(text, ok);
    if (!*ok) return 0;
    if (text.size() <= 2) return year < 30 ? 2000 + year : 1900 + year;
    return year;
}

QDate parseDatePart(const QString& text) {
    const QChar separator = text.contains(u'/') ? u'/' : u'-';
    const QStringList parts = text.split(separator);
    if (parts.size() != 3) return {};
    bool ok1 = false, ok2 = false, ok3 = false;
    if (parts[0].size() == 4) {  // yyyy-mm-dd
        const int y = parseInt(parts[0], &ok1);
        const int m = parseInt(parts[1], &ok2);
        const int d = parseInt(parts[2], &ok3);
        return ok1 && ok2 && ok3 ? QDate(y, m, d) : QDate();
    }
    int m = parseInt(parts[0], &ok1);
    int d = parseInt(parts[1], &ok2);
    const int y = expandYear(parts[2], &ok3);
    if (!ok1 || !ok2 || !ok3) return {};
    if (m > 12 && d <= 12) std::swap(m, d);  // cannot be a month: the day comes first
    return QDate(y, m, d);
}

class Parser {
  public:
    explicit Parser(const QString& sql) : sql_(sql), tokens_(tokenizeSql(sql)) {}

    TranslatedSql translate() {
        TranslatedSql result;
        const Token& first = peek();
        if (first.isWord(u"SELECT")) {
            SelectShape shape;
            result.kind = StatementKind::Select;
            result.sql = parseSelect(&shape);
            if (shape.singleTable && !shape.grouped) {
                result.updatableTable = shape.table;
                const QString owner = shape.alias.isEmpty() ? shape.table : shape.alias;
                // The row id goes last, so that ORDER BY 1 still means the
                // first column asked for.
                result.sqlWithRowId = shape.head + shape.list + u", "_s + quoteName(owner) +
                                      u".rowid AS "_s +
                                      quoteName(QString::fromLatin1(RowIdColumn)) + shape.rest;
            }
        } else if (first.isWord(u"INSERT")) {
            result.kind = StatementKind::Insert;
            result.sql = parseInsert(&result);
        } else if (first.isWord(u"UPDATE")) {
            result.kind = StatementKind::Update;
            result.sql = parseUpdate();
        } else if (first.isWord(u"DELETE")) {
            result.kind = StatementKind::Delete;
            result.sql = parseDelete();
        } else if (first.isWord(u"CREATE") || first.isWord(u"DROP") || first.isWord(u"ALTER")) {
            result.kind = StatementKind::Schema;
            result.sql = parseSchema();
        } else {
            fail(first, u"istruzione non riconosciuta"_s);
        }
        finish();
        return result;
    }

  private:
    // --- nesting ------------------------------------------------------------

    // Held by every rule that can recur on itself (an expression, so every
    // bracket and function argument; NOT; a sign; a subquery; a bracketed
    // join): a statement nested deeper than MaxSqlNesting is refused at the
    // place it goes too deep, before the descent can run out of stack.
    class Nesting {
      public:
        explicit Nesting(Parser* parser) : parser_(parser) {
            if (++parser_->depth_ > MaxSqlNesting) {
                parser_->fail(
                    parser_->peek(),
                    u"annidamento troppo profondo (più di %1 livelli)"_s.arg(MaxSqlNesting));
            }
        }
        ~Nesting() { --parser_->depth_; }
        Nesting(const Nesting&) = delete;
        Nesting& operator=(const Nesting&) = delete;

      private:
        Parser* parser_;
    };

    // --- token access -----------------------------------------------------

    const Token& peek(int ahead = 0) const {
        const size_t index = std::min(pos_ + size_t(ahead), tokens_.size() - 1);
        return tokens_[index];
    }
    const Token& take() {
        const Token& token = tokens_[pos_];
        if (pos_ + 1 < tokens_.size()) ++pos_;
        return token;
    }
    bool acceptWord(QStringView keyword) {
        if (!peek().isWord(keyword)) return false;
        take();
        return true;
    }
    void expectWord(QStringView keyword) {
        if (!acceptWord(keyword)) fail(peek(), u"atteso "_s + keyword.toString());
    }
    bool accept(TokenKind kind) {
        if (!peek().is(kind)) return false;
        take();
        return true;
    }
    void expect(TokenKind kind, const QString& what) {
        if (!accept(kind)) fail(peek(), u"atteso "_s + what);
    }
    [[noreturn]] void fail(const Token& at, const QString& what) const {
        throwSqlError(sql_, at.offset, what);
    }

    bool isName(const Token& token) const {
        if (token.is(TokenKind::Bracketed)) return true;
        return token.is(TokenKind::Word) && !reservedWords().contains(token.text.toUpper());
    }
    QString takeName(const QString& what) {
        if (!isName(peek())) fail(peek(), u"atteso "_s + what);
        return take().text;
    }

    // An optional alias: "AS name", or a bare name where one can stand.
    QString parseAlias(bool bareAllowed) {
        if (acceptWord(u"AS")) {
            if (peek().is(TokenKind::String)) return take().text;
            return takeName(u"un nome dopo AS"_s);
        }
        if (bareAllowed && isName(peek())) return take().text;
        return {};
    }

    void finish() {
        if (accept(TokenKind::Semicolon)) {
            if (!peek().is(TokenKind::End)) {
                fail(peek(),
                     u"è ammessa una sola istruzione: il testo dopo \";\" non viene eseguito"_s);
            }
        }
        if (!peek().is(TokenKind::End)) fail(peek(), u"atteso fine istruzione"_s);
    }

    // --- SELECT -------------------------------------------------------------

    struct SelectCore {
        QString head;  // "SELECT " [DISTINCT]
        QString list;  // the select list
        QString tail;  // FROM ... WHERE ... GROUP BY ... HAVING ...
        QString top;
        SelectShape shape;
    };

    QString parseSelect(SelectShape* outerShape) {
        const Nesting nesting(this);
        std::vector<SelectCore> cores;
        std::vector<QString> operators;
        cores.push_back(parseSelectCore());
        while (acceptWord(u"UNION")) {
            operators.push_back(acceptWord(u"ALL") ? u" UNION ALL "_s : u" UNION "_s);
            cores.push_back(parseSelectCore());
        }
        QString orderBy;
        if (acceptWord(u"ORDER")) {
            expectWord(u"BY");
            QStringList items;
            do {
                QString item = parseExpr().sql;
                if (acceptWord(u"DESC")) {
                    item += u" DESC"_s;
                } else if (acceptWord(u"ASC")) {
                    item += u" ASC"_s;
                }
                items << item;
            } while (accept(TokenKind::Comma));
            orderBy = u" ORDER BY "_s + items.join(u", "_s);
        }

        const bool compound = cores.size() > 1;
        QString sql;
        for (size_t i = 0; i < cores.size(); ++i) {
            const SelectCore& core = cores[i];
            QString text = core.head + core.list + core.tail;
            if (!core.top.isEmpty() && compound) {
                text = u"SELECT * FROM ("_s + text + u" LIMIT "_s + core.top + u')';
            }
            if (i > 0) sql += operators[i - 1];
            sql += text;
        }
        sql += orderBy;
        QString limit;
        if (!compound && !cores.front().top.isEmpty()) limit = u" LIMIT "_s + cores.front().top;
        sql += limit;

        if (outerShape) {
            *outerShape = cores.front().shape;
            outerShape->grouped = outerShape->grouped || compound;
            outerShape->head = cores.front().head;
            outerShape->list = cores.front().list;
            outerShape->rest = cores.front().tail + orderBy + limit;
        }
        return sql;
    }

    SelectCore parseSelectCore() {
        SelectCore core;
        expectWord(u"SELECT");
        core.head = u"SELECT "_s;
        if (acceptWord(u"DISTINCT")) {
            core.head += u"DISTINCT "_s;
            core.shape.grouped = true;
        } else if (acceptWord(u"DISTINCTROW")) {
            core.shape.grouped = true;
        } else {
            acceptWord(u"ALL");
        }
        if (acceptWord(u"TOP")) {
            if (!peek().is(TokenKind::Number)) fail(peek(), u"atteso un numero dopo TOP"_s);
            core.top = take().text;
        }

        QStringList items;
        int unnamed = 1000;
        do {
            items << parseSelectItem(&unnamed, &core.shape.grouped);
        } while (accept(TokenKind::Comma));
        core.list = items.join(u", "_s);

        if (acceptWord(u"FROM")) core.tail += u" FROM "_s + parseFromList(&core.shape);
        if (acceptWord(u"WHERE")) core.tail += u" WHERE "_s + parseExpr().sql;
        if (acceptWord(u"GROUP")) {
            expectWord(u"BY");
            QStringList keys;
            do {
                keys << parseExpr().sql;
            } while (accept(TokenKind::Comma));
            core.tail += u" GROUP BY "_s + keys.join(u", "_s);
            core.shape.grouped = true;
        }
        if (acceptWord(u"HAVING")) {
            core.tail += u" HAVING "_s + parseExpr().sql;
            core.shape.grouped = true;
        }
        return core;
    }

    QString parseSelectItem(int* unnamed, bool* aggregate) {
        if (peek().is(TokenKind::Operator) && peek().text == u"*") {
            take();
            return u"*"_s;
        }
        if (isName(peek()) && peek(1).is(TokenKind::Dot) && peek(2).isOperator(u"*")) {
            const QString owner = take().text;
            take();
            take();
            return quoteName(owner) + u".*"_s;
        }
        const Expr expr = parseExpr();
        *aggregate = *aggregate || expr.aggregate;
        QString alias = parseAlias(false);
        if (alias.isEmpty() && expr.columnName.isEmpty()) {
            alias =
                u"Expr"_s + QString::number((*unnamed)++);  // Jet's name for an unnamed expression
        }
        if (alias.isEmpty()) return expr.sql;
        return expr.sql + u" AS "_s + quoteName(alias);
    }

    QString parseFromList(SelectShape* shape) {
        int sources = 0;
        bool plainTable = false;
        QStringList parts;
        do {
            parts << parseTableRef(shape, &sources, &plainTable);
        } while (accept(TokenKind::Comma));
        shape->singleTable = sources == 1 && plainTable;
        return parts.join(u", "_s);
    }

    // A table, a derived table or a parenthesised join, followed by joins.
    QString parseTableRef(SelectShape* shape, int* sources, bool* plainTable) {
        const Nesting nesting(this);
        QString sql = parseTablePrimary(shape, sources, plainTable);
        while (true) {
            QString join;
            if (acceptWord(u"INNER")) {
                join = u" INNER JOIN "_s;
            } else if (acceptWord(u"LEFT")) {
                acceptWord(u"OUTER");
                join = u" LEFT JOIN "_s;
            } else if (acceptWord(u"RIGHT")) {
                acceptWord(u"OUTER");
                join = u" RIGHT JOIN "_s;
            } else if (peek().isWord(u"JOIN")) {
                join = u" INNER JOIN "_s;
            } else {
                break;
            }
            expectWord(u"JOIN");
            const QString right = parseTablePrimary(shape, sources, plainTable);
            expectWord(u"ON");
            sql += join + right + u" ON "_s + parseExpr().sql;
        }
        return sql;
    }

    QString parseTablePrimary(SelectShape* shape, int* sources, bool* plainTable) {
        if (accept(TokenKind::LParen)) {
            if (peek().isWord(u"SELECT")) {
                const QString select = parseSelect(nullptr);
                expect(TokenKind::RParen, u"\")\""_s);
                ++*sources;
                *plainTable = false;
                const QString alias = parseAlias(true);
                QString sql = u'(' + select + u')';
                if (!alias.isEmpty()) sql += u" AS "_s + quoteName(alias);
                return sql;
            }
            const QString inner = parseTableRef(shape, sources, plainTable);
            expect(TokenKind::RParen, u"\")\""_s);
            return u'(' + inner + u')';
        }
        const QString table = takeName(u"il nome di una tabella"_s);
        const QString alias = parseAlias(true);
        ++*sources;
        *plainTable = true;
        shape->table = table;
        shape->alias = alias;
        QString sql = quoteName(table);
        if (!alias.isEmpty()) sql += u" AS "_s + quoteName(alias);
        return sql;
    }

    // --- other statements ---------------------------------------------------

    QString parseInsert(TranslatedSql* result) {
        expectWord(u"INSERT");
        expectWord(u"INTO");
        const QString table = takeName(u"il nome di una tabella"_s);
        QString columns;
        if (peek().is(TokenKind::LParen) && !peek(1).isWord(u"SELECT")) {
            take();
            QStringList names;
            do {
                names << quoteName(takeName(u"il nome di un campo"_s));
            } while (accept(TokenKind::Comma));
            expect(TokenKind::RParen, u"\")\""_s);
            columns = u" ("_s + names.join(u", "_s) + u')';
        }
        QString sql = u"INSERT INTO "_s + quoteName(table) + columns + u' ';
        if (acceptWord(u"VALUES")) {
            expect(TokenKind::LParen, u"\"(\""_s);
            QStringList values;
            do {
                values << parseExpr().sql;
            } while (accept(TokenKind::Comma));
            expect(TokenKind::RParen, u"\")\""_s);
            return sql + u"VALUES ("_s + values.join(u", "_s) + u')';
        }
        if (!peek().isWord(u"SELECT")) fail(peek(), u"atteso SELECT o VALUES"_s);
        const QString select = parseSelect(nullptr);
        if (columns.isEmpty()) {
            result->insertTable = table;
            result->insertSelect = select;
        }
        return sql + select;
    }

    QString parseUpdate() {
        expectWord(u"UPDATE");
        const QString table = takeName(u"il nome di una tabella"_s);
        QString sql = u"UPDATE "_s + quoteName(table);
        const QString alias = parseAlias(!peek().isWord(u"SET"));
        if (!alias.isEmpty()) sql += u" AS "_s + quoteName(alias);
        expectWord(u"SET");
        QStringList assignments;
        do {
            QString column = takeName(u"il nome di un campo"_s);
            if (accept(TokenKind::Dot)) column = takeName(u"il nome di un campo"_s);
            if (!peek().isOperator(u"=")) fail(peek(), u"atteso \"=\""_s);
            take();
            assignments << quoteName(column) + u" = "_s + parseExpr().sql;
        } while (accept(TokenKind::Comma));
        sql += u" SET "_s + assignments.join(u", "_s);
        if (acceptWord(u"WHERE")) sql += u" WHERE "_s + parseExpr().sql;
        return sql;
    }

    QString parseDelete() {
        expectWord(u"DELETE");
        if (peek().isOperator(u"*")) {
            take();
        } else if (isName(peek()) && peek(1).is(TokenKind::Dot) && peek(2).isOperator(u"*")) {
            take();
            take();
            take();
        }
        expectWord(u"FROM");
        const QString table = takeName(u"il nome di una tabella"_s);
        QString sql = u"DELETE FROM "_s + quoteName(table);
        const QString alias = parseAlias(true);
        if (!alias.isEmpty()) sql += u" AS "_s + quoteName(alias);
        if (acceptWord(u"WHERE")) sql += u" WHERE "_s + parseExpr().sql;
        return sql;
    }

    // CREATE TABLE / INDEX, DROP TABLE / INDEX, ALTER TABLE: names quoted, Jet
    // types kept as declared (they decide the field types), text columns
    // compared without regard to case, COUNTER as the table's row id.
    QString parseSchema() {
        if (acceptWord(u"DROP")) {
            if (acceptWord(u"TABLE")) return u"DROP TABLE "_s + quoteName(takeName(u"un nome"_s));
            expectWord(u"INDEX");
            const QString index = takeName(u"un nome"_s);
            if (acceptWord(u"ON")) takeName(u"il nome di una tabella"_s);
            return u"DROP INDEX "_s + quoteName(index);
        }
        if (acceptWord(u"ALTER")) {
            expectWord(u"TABLE");
            QString sql = u"ALTER TABLE "_s + quoteName(takeName(u"un nome"_s));
            if (acceptWord(u"ADD")) {
                acceptWord(u"COLUMN");
                return sql + u" ADD COLUMN "_s + parseColumnDefinition();
            }
            expectWord(u"DROP");
            acceptWord(u"COLUMN");
            return sql + u" DROP COLUMN "_s + quoteName(takeName(u"un nome"_s));
        }
        expectWord(u"CREATE");
        if (acceptWord(u"TABLE")) {
            QString sql = u"CREATE TABLE "_s + quoteName(takeName(u"un nome"_s)) + u" ("_s;
            expect(TokenKind::LParen, u"\"(\""_s);
            QStringList elements;
            do {
                static const QStringList constraintStarts = {u"CONSTRAINT"_s, u"PRIMARY"_s,
                                                             u"UNIQUE"_s, u"FOREIGN"_s, u"CHECK"_s};
                if (constraintStarts.contains(peek().text.toUpper()) &&
                    peek().is(TokenKind::Word)) {
                    elements << passThroughUntilComma();
                } else {
                    elements << parseColumnDefinition();
                }
            } while (accept(TokenKind::Comma));
            expect(TokenKind::RParen, u"\")\""_s);
            return sql + elements.join(u", "_s) + u')';
        }
        const bool unique = acceptWord(u"UNIQUE");
        expectWord(u"INDEX");
        const QString index = takeName(u"un nome"_s);
        expectWord(u"ON");
        const QString table = takeName(u"il nome di una tabella"_s);
        expect(TokenKind::LParen, u"\"(\""_s);
        QStringList columns;
        do {
            QString column = quoteName(takeName(u"il nome di un campo"_s));
            if (acceptWord(u"DESC")) {
                column += u" DESC"_s;
            } else {
                acceptWord(u"ASC");
            }
            columns << column;
        } while (accept(TokenKind::Comma));
        expect(TokenKind::RParen, u"\")\""_s);
        return (unique ? u"CREATE UNIQUE INDEX "_s : u"CREATE INDEX "_s) + quoteName(index) +
               u" ON "_s + quoteName(table) + u" ("_s + columns.join(u", "_s) + u')';
    }

    QString parseColumnDefinition() {
        QString sql = quoteName(takeName(u"il nome di un campo"_s));
        if (!peek().is(TokenKind::Word)) fail(peek(), u"atteso il tipo del campo"_s);
        const QString type = take().text.toUpper();
        QString size;
        if (accept(TokenKind::LParen)) {
            QStringList numbers;
            do {
                if (!peek().is(TokenKind::Number)) fail(peek(), u"attesa una dimensione"_s);
                numbers << take().text;
            } while (accept(TokenKind::Comma));
            expect(TokenKind::RParen, u"\")\""_s);
            size = u'(' + numbers.join(u',') + u')';
        }
        static const QSet<QString> textTypes = {u"TEXT"_s,     u"VARCHAR"_s, u"CHAR"_s,
                                                u"STRING"_s,   u"MEMO"_s,    u"LONGTEXT"_s,
                                                u"NVARCHAR"_s, u"NCHAR"_s};
        if (type == u"COUNTER" || type == u"AUTOINCREMENT") {
            sql += u" INTEGER PRIMARY KEY AUTOINCREMENT"_s;
            if (peek().isWord(u"PRIMARY") && peek(1).isWord(u"KEY")) {
                take();
                take();
            }
        } else {
            sql += u' ' + type + size;
            if (textTypes.contains(type)) sql += u" COLLATE NOCASE"_s;
        }
        const QString rest = passThroughUntilComma();
        return rest.isEmpty() ? sql : sql + u' ' + rest;
    }

    // The tokens of a column or table constraint, up to the "," or ")" that
    // ends it: keywords kept, names quoted, literals translated.
    QString passThroughUntilComma() {
        static const QSet<QString> keywords = {
            u"PRIMARY"_s, u"KEY"_s,        u"NOT"_s,          u"NULL"_s,    u"UNIQUE"_s,
            u"DEFAULT"_s, u"CONSTRAINT"_s, u"REFERENCES"_s,   u"CHECK"_s,   u"ASC"_s,
            u"DESC"_s,    u"COLLATE"_s,    u"NOCASE"_s,       u"BINARY"_s,  u"ON"_s,
            u"DELETE"_s,  u"UPDATE"_s,     u"CASCADE"_s,      u"FOREIGN"_s, u"SET"_s,
            u"NO"_s,      u"ACTION"_s,     u"AUTOINCREMENT"_s};
        QStringList parts;
        int depth = 0;
        while (true) {
            const Token& token = peek();
            if (token.is(TokenKind::End)) break;
            if (depth == 0 && (token.is(TokenKind::Comma) || token.is(TokenKind::RParen))) break;
            if (token.is(TokenKind::Semicolon))
                fail(token, u"\";\" non ammesso nella definizione di un campo"_s);
            take();
            switch (token.kind) {
                case TokenKind::LParen:
                    ++depth;
                    parts << u"("_s;
                    break;
                case TokenKind::RParen:
                    --depth;
                    parts << u")"_s;
                    break;
                case TokenKind::Comma:
                    parts << u","_s;
                    break;
                case TokenKind::Bracketed:
                    parts << quoteName(token.text);
                    break;
                case TokenKind::String:
                    parts << quoteString(token.text);
                    break;
                case TokenKind::Date:
                    parts << quoteString(dateLiteral(token));
                    break;
                case TokenKind::Word: {
                    const QString upper = token.text.toUpper();
                    if (upper == u"TRUE") {
                        parts << u"-1"_s;
                    } else if (upper == u"FALSE") {
                        parts << u"0"_s;
                    } else if (keywords.contains(upper)) {
                        parts << upper;
                    } else {
                        parts << quoteName(token.text);
                    }
                    break;
                }
                default:
                    parts << token.text;
                    break;
            }
        }
        return parts.join(u' ');
    }

    // --- expressions, from the loosest operator to the tightest -------------

    Expr parseExpr() {
        const Nesting nesting(this);
        return parseOr();
    }

    static Expr binary(const Expr& left, const QString& op, const Expr& right) {
        Expr e;
        e.sql = u'(' + left.sql + u' ' + op + u' ' + right.sql + u')';
        e.aggregate = left.aggregate || right.aggregate;
        return e;
    }
    static Expr call(const QString& function, const Expr& left, const Expr& right) {
        Expr e;
        e.sql = function + u'(' + left.sql + u", "_s + right.sql + u')';
        e.aggregate = left.aggregate || right.aggregate;
        return e;
    }

    Expr parseOr() {
        Expr left = parseAnd();
        while (acceptWord(u"OR"))
            left = binary(left, u"OR"_s, parseAnd());
        return left;
    }

    Expr parseAnd() {
        Expr left = parseNot();
        while (acceptWord(u"AND"))
            left = binary(left, u"AND"_s, parseNot());
        return left;
    }

    Expr parseNot() {
        if (peek().isWord(u"NOT")) {
            const Nesting nesting(this);
            take();
            Expr operand = parseNot();
            operand.sql = u"(NOT "_s + operand.sql + u')';
            operand.literal = Literal::None;
            operand.columnName.clear();
            return operand;
        }
        return parseComparison();
    }

    // Text compares without regard to case: a string literal carries the
    // case-folding collation into the comparison.
    static void foldCase(Expr* e) {
        if (e->literal == Literal::String) e->sql += u" COLLATE NOCASE"_s;
    }

    Expr parseComparison() {
        Expr left = parseConcat();
        while (true) {
            const Token& token = peek();
            if (token.is(TokenKind::Operator) &&
                (token.text == u"=" || token.text == u"<>" || token.text == u"!=" ||
                 token.text == u"<" || token.text == u">" || token.text == u"<=" ||
                 token.text == u">=")) {
                const QString op = token.text == u"!=" ? u"<>"_s : token.text;
                take();
                Expr right = parseConcat();
                foldCase(&left);
                foldCase(&right);
                left = binary(left, op, right);
                continue;
            }
            if (acceptWord(u"IS")) {
                const bool negated = acceptWord(u"NOT");
                expectWord(u"NULL");
                Expr e = left;
                e.sql = u'(' + left.sql + (negated ? u" IS NOT NULL)"_s : u" IS NULL)"_s);
                e.literal = Literal::None;
                e.columnName.clear();
                left = e;
                continue;
            }
            const bool negated =
                token.isWord(u"NOT") &&
                (peek(1).isWord(u"IN") || peek(1).isWord(u"LIKE") || peek(1).isWord(u"BETWEEN"));
            if (negated) take();
            const QString notText = negated ? u"NOT "_s : QString();
            if (acceptWord(u"LIKE")) {
                left = binary(left, notText + u"LIKE"_s, parseConcat());
            } else if (acceptWord(u"BETWEEN")) {
                left = parseBetween(left, notText);
            } else if (acceptWord(u"IN")) {
                left = parseIn(left, notText);
            } else {
                break;
            }
        }
        return left;
    }

    // Jet takes the bounds of BETWEEN in either order.
    Expr parseBetween(const Expr& subject, const QString& notText) {
        Expr low = parseConcat();
        expectWord(u"AND");
        Expr high = parseConcat();
        Expr e;
        e.aggregate = subject.aggregate || low.aggregate || high.aggregate;
        const bool literals = low.literal != Literal::None && low.literal == high.literal &&
                              low.literal != Literal::Null;
        QString lowSql = low.sql;
        QString highSql = high.sql;
        if (literals) {
            if (literalGreater(low, high)) std::swap(lowSql, highSql);
        } else {
            lowSql = u"min("_s + low.sql + u", "_s + high.sql + u')';
            highSql = u"max("_s + low.sql + u", "_s + high.sql + u')';
        }
        QString subjectSql = subject.sql;
        if (low.literal == Literal::String || high.literal == Literal::String) {
            subjectSql = u'(' + subjectSql + u" COLLATE NOCASE)"_s;
        }
        e.sql = u'(' + subjectSql + u' ' + notText + u"BETWEEN "_s + lowSql + u" AND "_s + highSql +
                u')';
        return e;
    }

    static bool literalGreater(const Expr& a, const Expr& b) {
        switch (a.literal) {
            case Literal::Number:
                return a.value.toDouble() > b.value.toDouble();
            case Literal::String:
                return a.value.compare(b.value, Qt::CaseInsensitive) > 0;
            default:
                return a.value > b.value;  // ISO dates compare as text
        }
    }

    Expr parseIn(const Expr& subject, const QString& notText) {
        expect(TokenKind::LParen, u"\"(\" dopo IN"_s);
        Expr e;
        e.aggregate = subject.aggregate;
        QString list;
        bool textList = false;
        if (peek().isWord(u"SELECT")) {
            list = parseSelect(nullptr);
        } else {
            QStringList items;
            do {
                const Expr item = parseExpr();
                textList = textList || item.literal == Literal::String;
                items << item.sql;
            } while (accept(TokenKind::Comma));
            list = items.join(u", "_s);
        }
        expect(TokenKind::RParen, u"\")\""_s);
        const QString subjectSql =
            textList ? u'(' + subject.sql + u" COLLATE NOCASE)"_s : subject.sql;
        e.sql = u'(' + subjectSql + u' ' + notText + u"IN ("_s + list + u"))"_s;
        return e;
    }

    // "&" joins texts and takes Null as "".
    Expr parseConcat() {
        Expr left = parseAdditive();
        while (peek().isOperator(u"&")) {
            take();
            left = call(u"jet_concat"_s, left, parseAdditive());
        }
        return left;
    }

    // "+" adds numbers, joins two texts, moves a date by days; "-" also
    // subtracts dates: functions of ours, since dates are stored as text.
    Expr parseAdditive() {
        Expr left = parseMod();
        while (peek().isOperator(u"+") || peek().isOperator(u"-")) {
            const QString function = take().text == u"+" ? u"jet_add"_s : u"jet_sub"_s;
            left = call(function, left, parseMod());
        }
        return left;
    }

    Expr parseMod() {
        Expr left = parseIntegerDivision();
        while (acceptWord(u"MOD"))
            left = call(u"jet_mod"_s, left, parseIntegerDivision());
        return left;
    }

    Expr parseIntegerDivision() {
        Expr left = parseMultiplicative();
        while (peek().isOperator(u"\\")) {
            take();
            left = call(u"jet_intdiv"_s, left, parseMultiplicative());
        }
        return left;
    }

    // "/" always divides as floating point.
    Expr parseMultiplicative() {
        Expr left = parseUnary();
        while (peek().isOperator(u"*") || peek().isOperator(u"/")) {
            if (take().text == u"*") {
                left = binary(left, u"*"_s, parseUnary());
            } else {
                left = call(u"jet_div"_s, left, parseUnary());
            }
        }
        return left;
    }

    static QString negated(const QString& number) {
        return number.startsWith(u'-') ? number.mid(1) : u'-' + number;
    }

    Expr parseUnary() {
        if (peek().isOperator(u"-") || peek().isOperator(u"+")) {
            const Nesting nesting(this);
            const bool minus = take().text == u"-";
            Expr operand = parseUnary();
            // "(- " with its blank: the operand may itself start with "-"
            // (True is -1), and "--" would open a comment.
            if (minus && operand.literal == Literal::Number) {
                operand.value = negated(operand.value);
                operand.sql = u"(- "_s + operand.sql + u')';
                return operand;
            }
            Expr e;
            e.aggregate = operand.aggregate;
            e.sql = minus ? u"(- "_s + operand.sql + u')' : operand.sql;
            return e;
        }
        return parsePower();
    }

    Expr parsePower() {
        Expr left = parsePrimary();
        while (peek().isOperator(u"^")) {
            take();
            left = call(u"jet_pow"_s, left, parseUnary());
        }
        return left;
    }

    QString dateLiteral(const Token& token) const {
        const QString iso = accessDateLiteralToIso(token.text);
        if (iso.isEmpty()) fail(token, u"data non valida #"_s + token.text + u'#');
        return iso;
    }

    Expr parsePrimary() {
        const Token& token = peek();
        Expr e;
        switch (token.kind) {
            case TokenKind::Number:
                take();
                e.sql = token.text;
                e.literal = Literal::Number;
                e.value = token.text;
                return e;
            case TokenKind::String:
                take();
                e.sql = quoteString(token.text);
                e.literal = Literal::String;
                e.value = token.text;
                return e;
            case TokenKind::Date:
                take();
                e.value = dateLiteral(token);
                e.sql = quoteString(e.value);
                e.literal = Literal::Date;
                return e;
            case TokenKind::LParen: {
                take();
                if (peek().isWord(u"SELECT")) {
                    e.sql = u'(' + parseSelect(nullptr) + u')';
                } else {
                    const Expr inner = parseExpr();
                    e.sql = u'(' + inner.sql + u')';
                    e.aggregate = inner.aggregate;
                }
                expect(TokenKind::RParen, u"\")\""_s);
                return e;
            }
            case TokenKind::Word:
            case TokenKind::Bracketed:
                return parseNameOrCall();
            default:
                fail(token, u"attesa un'espressione"_s);
        }
    }

    Expr parseNameOrCall() {
        const Token& token = peek();
        Expr e;
        if (token.is(TokenKind::Word)) {
            const QString upper = token.text.toUpper();
            if (upper == u"NULL") {
                take();
                e.sql = u"NULL"_s;
                e.literal = Literal::Null;
                return e;
            }
            if (upper == u"TRUE" || upper == u"FALSE") {
                take();
                e.sql = upper == u"TRUE" ? u"-1"_s : u"0"_s;
                e.literal = Literal::Number;
                e.value = e.sql;
                return e;
            }
            if (upper == u"EXISTS") {
                take();
                expect(TokenKind::LParen, u"\"(\" dopo EXISTS"_s);
                if (!peek().isWord(u"SELECT")) fail(peek(), u"atteso SELECT"_s);
                e.sql = u"EXISTS ("_s + parseSelect(nullptr) + u')';
                expect(TokenKind::RParen, u"\")\""_s);
                return e;
            }
            if (peek(1).is(TokenKind::LParen)) return parseCall();
        }
        QString name = takeName(u"un'espressione"_s);
        e.sql = quoteName(name);
        while (accept(TokenKind::Dot)) {
            name = takeName(u"il nome di un campo dopo \".\""_s);
            e.sql += u'.' + quoteName(name);
        }
        e.columnName = name;
        return e;
    }

    Expr parseCall() {
        const Token& nameToken = take();
        const QString upper = nameToken.text.toUpper();
        take();  // "("
        Expr e;
        if (upper == u"IIF") return parseIif();
        e.aggregate = aggregateFunctions().contains(upper);
        QStringList args;
        if (upper == u"COUNT" && peek().isOperator(u"*")) {
            take();
            args << u"*"_s;
        } else if (!peek().is(TokenKind::RParen)) {
            do {
                const Expr arg = parseExpr();
                if (e.aggregate && arg.aggregate)
                    fail(nameToken, u"funzione di aggregazione annidata"_s);
                e.aggregate = e.aggregate || arg.aggregate;
                args << arg.sql;
            } while (accept(TokenKind::Comma));
        }
        expect(TokenKind::RParen, u"\")\""_s);
        // Names that are keywords to SQLite are called under names of ours.
        static const QHash<QString, QString> renamed = {{u"LEFT"_s, u"jet_left"_s},
                                                        {u"RIGHT"_s, u"jet_right"_s},
                                                        {u"ISNULL"_s, u"jet_isnull"_s}};
        const QString function = renamed.value(upper, nameToken.text);
        e.sql = function + u'(' + args.join(u", "_s) + u')';
        return e;
    }

    // IIF(c, a, b), and the form iif(c ; a ; b ;) with ";" between the
    // operands and before the closing bracket. Both evaluate lazily.
    Expr parseIif() {
        const auto separator = [this] {
            if (!accept(TokenKind::Comma) && !accept(TokenKind::Semicolon)) {
                fail(peek(), u"atteso \",\" o \";\" tra gli argomenti di IIF"_s);
            }
        };
        const Expr condition = parseExpr();
        separator();
        const Expr whenTrue = parseExpr();
        separator();
        const Expr whenFalse = parseExpr();
        accept(TokenKind::Semicolon);
        expect(TokenKind::RParen, u"\")\" alla fine di IIF"_s);
        Expr e;
        e.sql = u"(CASE WHEN "_s + condition.sql + u" THEN "_s + whenTrue.sql + u" ELSE "_s +
                whenFalse.sql + u" END)"_s;
        e.aggregate = condition.aggregate || whenTrue.aggregate || whenFalse.aggregate;
        return e;
    }

    const QString& sql_;
    std::vector<Token> tokens_;
    size_t pos_ = 0;
    int depth_ = 0;
};

}  // namespace

QString accessDateLiteralToIso(const QString& text) {
    QString datePart = text.trimmed();
    QString timePart;
    const qsizetype blank = datePart.indexOf(u' ');
    if (blank >= 0) {
        timePart = datePart.mid(blank + 1);
        datePart = datePart.left(blank);
    }
    QDate date(1899, 12, 30);
    if (datePart.contains(u':')) {  // a time alone
        if (!timePart.isEmpty() && !timePart.trimmed().toUpper().startsWith(u'A') &&
            !timePart.trimmed().toUpper().startsWith(u'P')) {
            return {};
        }
        timePart = datePart + u' ' + timePart;
    } else {
        date = parseDatePart(datePart);
        if (!date.isValid()) return {};
    }
    QTime time(0, 0);
    if (!timePart.trimmed().isEmpty()) {
        bool ok = false;
        time = parseTimePart(timePart, &ok);
        if (!ok) return {};
    }
    return date.toString(u"yyyy-MM-dd"_s) + u' ' + time.toString(u"HH:mm:ss"_s);
}

TranslatedSql translateAccessSql(const QString& accessSql) { return Parser(accessSql).translate(); }

}  // namespace lorvane::db
