#include "db/filter.h"

#include "db/access_sql.h"
#include "db/sql_tokenizer.h"
#include "platform/message_text.h"
#include "platform/runtime_error.h"

namespace lorvane::db {

using namespace Qt::StringLiterals;

enum class Op { Equal, NotEqual, Less, Greater, LessEqual, GreaterEqual, Like };
enum class Join { And, Or };

struct RecordFilter::Node {
    // A term, or a group of nodes joined left to right.
    int column = -1;
    Op op = Op::Equal;
    Variant value;
    QString likeText;  // LIKE: the text without its wildcards, case-folded
    bool likeAnyStart = false;
    bool likeAnyEnd = false;
    std::vector<std::unique_ptr<Node>> children;
    std::vector<Join> joins;  // joins[i] stands between children[i] and children[i + 1]

    bool isGroup() const { return column < 0; }
};

namespace {

class FilterParser {
  public:
    FilterParser(const QString& criteria, const RecordFilter::FieldLookup& lookup)
        : criteria_(criteria), lookup_(lookup) {
        try {
            tokens_ = tokenizeSql(criteria);
        } catch (const RuntimeError&) {
            fail(u"testo non leggibile"_s);
        }
    }

    std::unique_ptr<RecordFilter::Node> parse() {
        auto root = parseGroup();
        if (!peek().is(TokenKind::End)) fail(u"testo in più alla fine"_s);
        return root;
    }

  private:
    const Token& peek() const { return tokens_[pos_]; }
    const Token& take() { return tokens_[pos_ < tokens_.size() - 1 ? pos_++ : pos_]; }

    [[noreturn]] void fail(const QString& what) const {
        throw RuntimeError(
            u"Filtro non valido (%1): %2"_s.arg(what, platform::elided(criteria_, 500)));
    }

    std::unique_ptr<RecordFilter::Node> parseGroup() {
        auto group = std::make_unique<RecordFilter::Node>();
        group->children.push_back(parseTerm());
        while (peek().isWord(u"AND") || peek().isWord(u"OR")) {
            group->joins.push_back(take().isWord(u"AND") ? Join::And : Join::Or);
            group->children.push_back(parseTerm());
        }
        return group;
    }

    std::unique_ptr<RecordFilter::Node> parseTerm() {
        if (peek().is(TokenKind::LParen)) {
            if (++depth_ > MaxFilterNesting) {
                fail(u"più di %1 parentesi una dentro l'altra, al carattere %2"_s
                         .arg(MaxFilterNesting)
                         .arg(peek().offset + 1));
            }
            take();
            auto group = parseGroup();
            if (!take().is(TokenKind::RParen)) fail(u"manca \")\""_s);
            --depth_;
            return group;
        }
        const Token& name = take();
        if (!name.is(TokenKind::Word) && !name.is(TokenKind::Bracketed))
            fail(u"atteso il nome di un campo"_s);
        const auto field = lookup_(name.text);
        if (!field) fail(u"campo '%1' inesistente"_s.arg(name.text));

        auto term = std::make_unique<RecordFilter::Node>();
        term->column = field->index;
        const Token& op = take();
        if (op.isWord(u"LIKE")) {
            term->op = Op::Like;
        } else if (op.is(TokenKind::Operator)) {
            static const std::pair<QStringView, Op> ops[] = {
                {u"=", Op::Equal},   {u"<>", Op::NotEqual},  {u"<", Op::Less},
                {u">", Op::Greater}, {u"<=", Op::LessEqual}, {u">=", Op::GreaterEqual}};
            const auto found = std::find_if(std::begin(ops), std::end(ops), [&](const auto& entry) {
                return entry.first == op.text;
            });
            if (found == std::end(ops)) fail(u"operatore '%1' non ammesso"_s.arg(op.text));
            term->op = found->second;
        } else {
            fail(u"atteso un operatore dopo '%1'"_s.arg(name.text));
        }
        term->value = parseValue();
        if (term->op == Op::Like) {
            setLikePattern(term.get());
        } else if (!term->value.isNull()) {
            try {
                term->value = convertForField(term->value, field->type, name.text);
            } catch (const RuntimeError&) {
                // compared as written, by the runtime's rules
            }
        }
        return term;
    }

    Variant parseValue() {
        bool negative = false;
        if (peek().isOperator(u"-")) {
            take();
            negative = true;
        }
        const Token& token = take();
        switch (token.kind) {
            case TokenKind::String:
                return Variant(token.text);
            case TokenKind::Number: {
                bool ok = false;
                const double number = token.text.toDouble(&ok);
                if (!ok) fail(u"numero non valido"_s);
                const double value = negative ? -number : number;
                if (!token.text.contains(u'.') && !token.text.contains(u'e', Qt::CaseInsensitive) &&
                    std::abs(value) <= 2147483647.0) {
                    return Variant(qint32(value));
                }
                return Variant(value);
            }
            case TokenKind::Date: {
                const QString iso = accessDateLiteralToIso(token.text);
                const auto date = DateTime::fromIso(iso);
                if (iso.isEmpty() || !date) fail(u"data non valida #%1#"_s.arg(token.text));
                return Variant(*date);
            }
            case TokenKind::Word:
                if (token.isWord(u"Null")) return Variant::null();
                [[fallthrough]];
            default:
                fail(u"atteso un valore"_s);
        }
    }

    void setLikePattern(RecordFilter::Node* term) {
        if (term->value.type() != VarType::String) fail(u"LIKE vuole un testo tra apici"_s);
        QString pattern = *term->value.get<QString>();
        const auto isWildcard = [](QChar c) { return c == u'*' || c == u'%'; };
        if (!pattern.isEmpty() && isWildcard(pattern.front())) {
            term->likeAnyStart = true;
            pattern.remove(0, 1);
        }
        if (!pattern.isEmpty() && isWildcard(pattern.back())) {
            term->likeAnyEnd = true;
            pattern.chop(1);
        }
        if (std::any_of(pattern.begin(), pattern.end(), isWildcard)) {
            fail(u"in LIKE \"*\" e \"%\" stanno solo all'inizio o alla fine"_s);
        }
        term->likeText = pattern.toCaseFolded();
    }

    const QString& criteria_;
    const RecordFilter::FieldLookup& lookup_;
    std::vector<Token> tokens_;
    size_t pos_ = 0;
    int depth_ = 0;
};

bool likeMatch(const RecordFilter::Node& term, const Variant& value) {
    const QString text = value.text().toCaseFolded();
    if (term.likeAnyStart && term.likeAnyEnd) return text.contains(term.likeText);
    if (term.likeAnyStart) return text.endsWith(term.likeText);
    if (term.likeAnyEnd) return text.startsWith(term.likeText);
    return text == term.likeText;
}

bool termMatches(const RecordFilter::Node& term, const Variant& value) {
    if (term.value.isNull()) {
        if (term.op == Op::Equal) return value.isNull();
        if (term.op == Op::NotEqual) return !value.isNull();
        return false;
    }
    if (value.isNull()) return false;
    if (term.op == Op::Like) return likeMatch(term, value);
    const auto order = compare(value, term.value);
    if (!order) return false;
    switch (term.op) {
        case Op::Equal:
            return *order == 0;
        case Op::NotEqual:
            return *order != 0;
        case Op::Less:
            return *order < 0;
        case Op::Greater:
            return *order > 0;
        case Op::LessEqual:
            return *order <= 0;
        case Op::GreaterEqual:
            return *order >= 0;
        case Op::Like:
            break;
    }
    return false;
}

bool nodeMatches(const RecordFilter::Node& node, const RecordFilter::ValueOf& valueOf) {
    if (!node.isGroup()) return termMatches(node, valueOf(node.column));
    bool result = nodeMatches(*node.children[0], valueOf);
    for (size_t i = 0; i < node.joins.size(); ++i) {
        const bool next = nodeMatches(*node.children[i + 1], valueOf);
        result = node.joins[i] == Join::And ? result && next : result || next;
    }
    return result;
}

}  // namespace

RecordFilter::RecordFilter(std::unique_ptr<Node> root) : root_(std::move(root)) {}
RecordFilter::RecordFilter(RecordFilter&&) noexcept = default;
RecordFilter& RecordFilter::operator=(RecordFilter&&) noexcept = default;
RecordFilter::~RecordFilter() = default;

RecordFilter RecordFilter::parse(const QString& criteria, const FieldLookup& lookup) {
    return RecordFilter(FilterParser(criteria, lookup).parse());
}

bool RecordFilter::matches(const ValueOf& valueOf) const { return nodeMatches(*root_, valueOf); }

std::optional<std::pair<int, Variant>> RecordFilter::singleEquality() const {
    const Node* node = root_.get();
    while (node->isGroup() && node->children.size() == 1)
        node = node->children[0].get();
    if (node->isGroup() || node->op != Op::Equal || node->value.isNull()) return std::nullopt;
    return std::make_pair(node->column, node->value);
}

QString equalityKey(const Variant& value) {
    switch (value.type()) {
        case VarType::Null:
            return {};
        case VarType::Date:
            return u'd' + QString::number(value.get<DateTime>()->seconds());
        case VarType::String:
        case VarType::Empty:
            return u's' + value.text().toCaseFolded();
        default:
            return u'n' + QString::number(value.toDouble(), 'g', 17);
    }
}

}  // namespace lorvane::db
