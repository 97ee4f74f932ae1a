#include "db/sql_tokenizer.h"

#include "platform/message_text.h"
#include "platform/runtime_error.h"

namespace lorvane::db {

// A statement longer than this (in characters) is quoted cut in an error: the
// place in the message says where the fault is.
constexpr qsizetype MaxQuotedStatement = 500;

void throwSqlError(const QString& sql, int offset, const QString& what) {
    const QString near = sql.mid(offset, 20).simplified();
    QString place = QStringLiteral("al carattere %1").arg(offset + 1);
    if (!near.isEmpty()) place += QStringLiteral(", vicino a \"%1\"").arg(near);
    throw RuntimeError(QStringLiteral("Errore di sintassi nell'istruzione SQL (%1, %2): %3")
                           .arg(what, place, platform::elided(sql, MaxQuotedStatement)));
}

namespace {

bool isWordChar(QChar c) { return c.isLetterOrNumber() || c == u'_'; }

class Tokenizer {
  public:
    explicit Tokenizer(const QString& sql) : sql_(sql) {}

    std::vector<Token> run() {
        std::vector<Token> tokens;
        while (true) {
            skipBlanks();
            if (pos_ >= sql_.size()) break;
            tokens.push_back(next());
        }
        tokens.push_back(Token{TokenKind::End, QString(), int(sql_.size()), 0});
        return tokens;
    }

  private:
    void skipBlanks() {
        while (pos_ < sql_.size() && sql_[pos_].isSpace())
            ++pos_;
    }

    Token make(TokenKind kind, QString text, qsizetype start) const {
        return Token{kind, std::move(text), int(start), int(pos_ - start)};
    }

    Token next() {
        const qsizetype start = pos_;
        const QChar c = sql_[pos_];
        if (c == u'\'' || c == u'"') return quoted(c, TokenKind::String);
        if (c == u'[') return bracketed();
        if (c == u'#') return date();
        if (c.isDigit() || (c == u'.' && pos_ + 1 < sql_.size() && sql_[pos_ + 1].isDigit())) {
            return number();
        }
        if (isWordChar(c)) {
            while (pos_ < sql_.size() && isWordChar(sql_[pos_]))
                ++pos_;
            return make(TokenKind::Word, sql_.mid(start, pos_ - start), start);
        }
        ++pos_;
        switch (c.unicode()) {
            case u'(':
                return make(TokenKind::LParen, QStringLiteral("("), start);
            case u')':
                return make(TokenKind::RParen, QStringLiteral(")"), start);
            case u',':
                return make(TokenKind::Comma, QStringLiteral(","), start);
            case u';':
                return make(TokenKind::Semicolon, QStringLiteral(";"), start);
            case u'.':
                return make(TokenKind::Dot, QStringLiteral("."), start);
            case u'=':
            case u'+':
            case u'-':
            case u'*':
            case u'/':
            case u'\\':
            case u'^':
            case u'&':
                return make(TokenKind::Operator, QString(c), start);
            case u'<':
                if (pos_ < sql_.size() && (sql_[pos_] == u'>' || sql_[pos_] == u'=')) ++pos_;
                return make(TokenKind::Operator, sql_.mid(start, pos_ - start), start);
            case u'>':
            case u'!':
                if (pos_ < sql_.size() && sql_[pos_] == u'=') ++pos_;
                if (c == u'!' && pos_ - start == 1) break;
                return make(TokenKind::Operator, sql_.mid(start, pos_ - start), start);
            default:
                break;
        }
        throwSqlError(sql_, int(start), QStringLiteral("carattere non valido '%1'").arg(c));
    }

    Token quoted(QChar quote, TokenKind kind) {
        const qsizetype start = pos_++;
        QString value;
        while (true) {
            if (pos_ >= sql_.size()) {
                throwSqlError(sql_, int(start), QStringLiteral("testo tra apici non chiuso"));
            }
            const QChar c = sql_[pos_++];
            if (c == quote) {
                if (pos_ < sql_.size() && sql_[pos_] == quote) {
                    value += quote;
                    ++pos_;
                    continue;
                }
                break;
            }
            value += c;
        }
        return make(kind, value, start);
    }

    Token bracketed() {
        const qsizetype start = pos_++;
        const qsizetype close = sql_.indexOf(u']', pos_);
        if (close < 0)
            throwSqlError(sql_, int(start), QStringLiteral("nome tra parentesi quadre non chiuso"));
        const QString name = sql_.mid(pos_, close - pos_);
        pos_ = close + 1;
        return make(TokenKind::Bracketed, name, start);
    }

    Token date() {
        const qsizetype start = pos_++;
        const qsizetype close = sql_.indexOf(u'#', pos_);
        if (close < 0) throwSqlError(sql_, int(start), QStringLiteral("data tra # non chiusa"));
        const QString text = sql_.mid(pos_, close - pos_);
        pos_ = close + 1;
        return make(TokenKind::Date, text, start);
    }

    Token number() {
        const qsizetype start = pos_;
        while (pos_ < sql_.size() && sql_[pos_].isDigit())
            ++pos_;
        if (pos_ < sql_.size() && sql_[pos_] == u'.') {
            ++pos_;
            while (pos_ < sql_.size() && sql_[pos_].isDigit())
                ++pos_;
        }
        if (pos_ + 1 < sql_.size() && (sql_[pos_] == u'e' || sql_[pos_] == u'E')) {
            qsizetype p = pos_ + 1;
            if (sql_[p] == u'+' || sql_[p] == u'-') ++p;
            if (p < sql_.size() && sql_[p].isDigit()) {
                pos_ = p;
                while (pos_ < sql_.size() && sql_[pos_].isDigit())
                    ++pos_;
            }
        }
        if (pos_ < sql_.size() && isWordChar(sql_[pos_])) {
            throwSqlError(sql_, int(start), QStringLiteral("numero non valido"));
        }
        return make(TokenKind::Number, sql_.mid(start, pos_ - start), start);
    }

    const QString& sql_;
    qsizetype pos_ = 0;
};

}  // namespace

std::vector<Token> tokenizeSql(const QString& sql) { return Tokenizer(sql).run(); }

}  // namespace lorvane::db
