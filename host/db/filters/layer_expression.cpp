// Parses by recursive descent and links the conditions as they are read.
#include "host/db/filters/layer_expression.h"

#include "host/db/kernel/text_fold.h"

#include <algorithm>

namespace korvex {

namespace {

struct Token {
    enum Kind { end, word, quoted, comparison, open, close, broken } kind = end;
    std::size_t at = 0;
    std::wstring_view text;
};

bool isBlank(wchar_t c) { return c == L' ' || (c >= L'\t' && c <= L'\r'); }

constexpr std::wstring_view kOperatorCharacters = L"=!<>";
constexpr wchar_t kQuote = L'"';

struct Operator {
    std::wstring_view text;
    Comparison comparison;
};
constexpr Operator kOperators[] = {
    {L"==", Comparison::equal},          {L"!=", Comparison::different}, {L"<=", Comparison::lessOrEqual},
    {L">=", Comparison::greaterOrEqual}, {L"<", Comparison::less},       {L">", Comparison::greater},
};

class Tokens {
public:
    explicit Tokens(std::wstring_view text) : m_text(text) { next(); }
    const Token& now() const { return m_now; }
    void next();
    bool isKeyword(std::wstring_view keyword) const {
        return m_now.kind == Token::word && equalNames(m_now.text, keyword);
    }

private:
    void take(Token::Kind kind, std::size_t size) {
        m_now = {kind, m_at, m_text.substr(m_at, size)};
        m_at += size;
    }
    void takeQuoted();

    std::wstring_view m_text;
    std::size_t m_at = 0;
    Token m_now;
};

void Tokens::next() {
    while (m_at < m_text.size() && isBlank(m_text[m_at])) {
        ++m_at;
    }
    if (m_at == m_text.size()) {
        take(Token::end, 0);
        return;
    }
    const wchar_t c = m_text[m_at];
    if (c == L'(' || c == L')') {
        take(c == L'(' ? Token::open : Token::close, 1);
    } else if (c == kQuote) {
        takeQuoted();
    } else if (kOperatorCharacters.find(c) != std::wstring_view::npos) {
        const std::wstring_view rest = m_text.substr(m_at);
        take(Token::comparison, std::min(rest.find_first_not_of(kOperatorCharacters), rest.size()));
    } else {
        std::size_t size = 0;
        while (m_at + size < m_text.size() && !isBlank(m_text[m_at + size]) &&
               std::wstring_view(L"()\"=!<>").find(m_text[m_at + size]) == std::wstring_view::npos) {
            ++size;
        }
        take(Token::word, size);
    }
}

void Tokens::takeQuoted() {
    const std::size_t closing = m_text.find(kQuote, m_at + 1);
    if (closing == std::wstring_view::npos) {
        take(Token::broken, m_text.size() - m_at);
        return;
    }
    m_now = {Token::quoted, m_at, m_text.substr(m_at + 1, closing - m_at - 1)};
    m_at = closing + 1;
}

/// One way out of a condition that has no goal yet.
struct Exit {
    int condition;
    bool whenTrue;
};

/// A part of an expression: where it begins, and its ways out.
struct Part {
    int first = 0;
    std::vector<Exit> whenTrue;
    std::vector<Exit> whenFalse;
};

class Parser {
public:
    Parser(std::wstring_view text, std::vector<LayerCondition>& conditions)
        : m_tokens(text), m_conditions(conditions) {}
    /// False with the reason.
    bool parse(HxLyExpressionError& error);

private:
    bool fail(const Token& token, std::wstring reason);
    bool chain(Part& part, bool isOr);
    bool alternatives(Part& part) { return chain(part, true); }
    bool conjunction(Part& part) { return chain(part, false); }
    bool negation(Part& part);
    bool inParentheses(Part& part);
    bool condition(Part& part);
    bool comparison(Comparison& comparison);
    void lead(std::vector<Exit>& exits, int goal);

    Tokens m_tokens;
    std::vector<LayerCondition>& m_conditions;
    int m_depth = 0;
    HxLyExpressionError m_error;
};

std::wstring quoted(std::wstring_view text) { return L"\"" + std::wstring(text) + L"\""; }

bool Parser::fail(const Token& token, std::wstring reason) {
    m_error.position = static_cast<int>(token.at);
    m_error.reason = token.kind == Token::broken ? L"the closing quote is missing" : std::move(reason);
    return false;
}

void Parser::lead(std::vector<Exit>& exits, int goal) {
    for (const Exit& exit : exits) {
        LayerCondition& condition = m_conditions[static_cast<std::size_t>(exit.condition)];
        (exit.whenTrue ? condition.whenTrue : condition.whenFalse) = goal;
    }
    exits.clear();
}

bool Parser::parse(HxLyExpressionError& error) {
    Part all;
    if (m_tokens.now().kind == Token::end) {
        return true;
    }
    bool good = alternatives(all);
    if (good && m_tokens.now().kind != Token::end) {
        const Token& token = m_tokens.now();
        good = fail(token,
                    token.kind == Token::close ? L"\")\" closes nothing" : L"AND, OR or the end is expected");
    }
    lead(all.whenTrue, LayerCondition::kAccept);
    lead(all.whenFalse, LayerCondition::kRefuse);
    error = m_error;
    return good;
}

/// Operands joined by OR, or by AND.
bool Parser::chain(Part& part, bool isOr) {
    const auto operand = [&](Part& one) { return isOr ? conjunction(one) : negation(one); };
    if (!operand(part)) {
        return false;
    }
    while (m_tokens.isKeyword(isOr ? L"OR" : L"AND")) {
        m_tokens.next();
        Part more;
        if (!operand(more)) {
            return false;
        }
        std::vector<Exit>& decided = isOr ? part.whenTrue : part.whenFalse;
        const std::vector<Exit>& moreDecided = isOr ? more.whenTrue : more.whenFalse;
        std::vector<Exit>& open = isOr ? part.whenFalse : part.whenTrue;
        lead(open, more.first);
        open = isOr ? std::move(more.whenFalse) : std::move(more.whenTrue);
        decided.insert(decided.end(), moreDecided.begin(), moreDecided.end());
    }
    return true;
}

bool Parser::negation(Part& part) {
    const Token token = m_tokens.now();
    const bool isNot = m_tokens.isKeyword(L"NOT");
    if (!isNot && token.kind != Token::open) {
        return condition(part);
    }
    if (m_depth == LayerExpression::kDeepest) {
        return fail(token, L"NOT and parentheses are nested more than " +
                               std::to_wstring(LayerExpression::kDeepest) + L" deep");
    }
    ++m_depth;
    m_tokens.next();
    const bool good = isNot ? negation(part) : inParentheses(part);
    --m_depth;
    if (isNot) {
        std::swap(part.whenTrue, part.whenFalse);
    }
    return good;
}

bool Parser::inParentheses(Part& part) {
    if (!alternatives(part)) {
        return false;
    }
    if (m_tokens.now().kind != Token::close) {
        return fail(m_tokens.now(), L"\")\" is missing");
    }
    m_tokens.next();
    return true;
}

bool Parser::comparison(Comparison& comparison) {
    const Token token = m_tokens.now();
    const auto found = std::find_if(std::begin(kOperators), std::end(kOperators),
                                    [&](const Operator& known) { return known.text == token.text; });
    if (token.kind != Token::comparison || found == std::end(kOperators)) {
        return fail(token, L"a comparison is expected: ==, !=, <, >, <= or >=");
    }
    comparison = found->comparison;
    m_tokens.next();
    return true;
}

bool Parser::condition(Part& part) {
    const Token name = m_tokens.now();
    if (name.kind != Token::word) {
        return fail(name, L"a layer property is expected");
    }
    const PropertyName* property = propertyNamed(name.text);
    if (!property) {
        return fail(name, quoted(name.text) + L" is no layer property");
    }
    m_tokens.next();
    Comparison how = Comparison::equal;
    if (!comparison(how)) {
        return false;
    }
    const Token value = m_tokens.now();
    if (value.kind != Token::quoted && value.kind != Token::word) {
        return fail(value, L"a value is expected");
    }
    LayerCondition made;
    std::wstring reason;
    if (!made.make(*property, how, value.text, reason)) {
        return fail(value, reason);
    }
    m_tokens.next();
    part.first = static_cast<int>(m_conditions.size());
    part.whenTrue = {{part.first, true}};
    part.whenFalse = {{part.first, false}};
    m_conditions.push_back(std::move(made));
    return true;
}

}  // namespace

bool LayerExpression::parse(std::wstring_view text, HxLyExpressionError& error) {
    m_conditions.clear();
    error = {};
    m_valid = Parser(text, m_conditions).parse(error);
    m_needsViewport = std::any_of(m_conditions.begin(), m_conditions.end(),
                                  [](const LayerCondition& condition) { return condition.needsViewport(); });
    return m_valid;
}

bool LayerExpression::accepts(const HxDbLayerTableRecord& layer, const ActiveViewport& viewport) const {
    if (!m_valid || m_conditions.empty()) {
        return m_valid;
    }
    int at = 0;
    while (at >= 0) {
        const LayerCondition& condition = m_conditions[static_cast<std::size_t>(at)];
        at = condition.holds(layer, viewport) ? condition.whenTrue : condition.whenFalse;
    }
    return at == LayerCondition::kAccept;
}

}  // namespace korvex
