// Splits a statement of the Access (Jet) SQL dialect into tokens, keeping the
// offset of each in the original text for error messages.
#pragma once

#include <QString>
#include <vector>

namespace lorvane::db {

enum class TokenKind {
    Word,       // a name or keyword: letters, digits, "_"
    Bracketed,  // [any name]; text holds the name without brackets
    String,     // '...' or "..."; text holds the value with quotes undoubled
    Number,     // 12, 1.5, 1E3
    Date,       // #...#; text holds what stands between the hashes
    Operator,   // = <> != < > <= >= + - * / \ ^ &
    LParen,
    RParen,
    Comma,
    Semicolon,
    Dot,
    End,
};

struct Token {
    TokenKind kind = TokenKind::End;
    QString text;
    int offset = 0;  // in characters, from the start of the statement
    int length = 0;  // in characters of the original text

    bool is(TokenKind k) const { return kind == k; }
    bool isOperator(QStringView op) const { return kind == TokenKind::Operator && text == op; }
    // A word equal to `keyword` without regard to case.
    bool isWord(QStringView keyword) const {
        return kind == TokenKind::Word && text.compare(keyword, Qt::CaseInsensitive) == 0;
    }
};

// Tokenizes `sql`. The last token is always End. Throws RuntimeError quoting
// the statement for an unterminated literal or a character that no token starts with.
std::vector<Token> tokenizeSql(const QString& sql);

// The error for a fault at `offset` of `sql`: the message, the place, and the statement.
[[noreturn]] void throwSqlError(const QString& sql, int offset, const QString& what);

}  // namespace lorvane::db
