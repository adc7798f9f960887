#include "db/statement_text.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <stdexcept>

namespace orvo {

namespace {

bool starts_word(char c)
{
    return std::isalpha(static_cast<unsigned char>(c)) || c == '_' || (c & 0x80);
}
bool continues_word(char c)
{
    return starts_word(c) || (c >= '0' && c <= '9');
}
bool is_digit(char c)
{
    return c >= '0' && c <= '9';
}

std::string lower(std::string_view text)
{
    std::string result{text};
    std::transform(result.begin(), result.end(), result.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return result;
}

/// Cuts a text into tokens, once from front to back.
class lexer {
public:
    explicit lexer(std::string_view text) : text_{text} {}

    std::vector<token> tokens()
    {
        std::vector<token> found;
        while (true) {
            while (at_ < text_.size() && std::isspace(static_cast<unsigned char>(text_[at_])))
                ++at_;
            if (at_ == text_.size())
                return found;
            found.push_back(next());
        }
    }

private:
    std::string_view text_;
    std::size_t at_ = 0;

    token next()
    {
        const char c = text_[at_];
        if (c == '\'')
            return literal();
        if (c == '{')
            return {token::kind::slot, slot_name(), {}};
        if (starts_word(c))
            return {token::kind::word, take_while(continues_word), {}};
        if (is_digit(c))
            return {token::kind::number, take_while(is_digit), {}};
        static constexpr std::array<std::string_view, 5> pairs{"<>", "<=", ">=", "!=", "||"};
        const std::size_t size = std::count(pairs.begin(), pairs.end(), text_.substr(at_, 2)) ? 2 : 1;
        at_ += size;
        return {token::kind::sign, std::string{text_.substr(at_ - size, size)}, {}};
    }

    std::string take_while(bool (*belongs)(char))
    {
        const std::size_t from = at_;
        while (at_ < text_.size() && belongs(text_[at_]))
            ++at_;
        return std::string{text_.substr(from, at_ - from)};
    }

    std::string slot_name()
    {
        const std::size_t end = text_.find('}', at_);
        if (end == std::string_view::npos)
            throw std::logic_error{"a slot does not end"};
        std::string name{text_.substr(at_ + 1, end - at_ - 1)};
        at_ = end + 1;
        return name;
    }

    token literal()
    {
        token result{token::kind::literal, {}, {}};
        std::string constant;
        const auto flush = [&] {
            if (!constant.empty())
                result.pieces.push_back({false, std::exchange(constant, {})});
        };
        for (++at_; at_ < text_.size();) {
            if (text_.substr(at_, 2) == "''") {
                constant += '\'';
                at_ += 2;
            } else if (text_[at_] == '\'') {
                ++at_;
                flush();
                return result;
            } else if (text_[at_] == '{') {
                flush();
                result.pieces.push_back({true, slot_name()});
            } else {
                constant += text_[at_++];
            }
        }
        throw std::logic_error{"a literal does not end"};
    }
};

bool is_comparison(const token& t)
{
    static constexpr std::array<std::string_view, 7> signs{"=", "<>", "!=", "<", ">", "<=", ">="};
    return t.is == token::kind::sign && std::count(signs.begin(), signs.end(), t.text);
}

bool is_arithmetic(const token& t)
{
    return t.is == token::kind::sign && (t.text == "+" || t.text == "-" || t.text == "*" || t.text == "/");
}

bool is_one_of(const token& t, std::initializer_list<std::string_view> words)
{
    return std::ranges::any_of(words, [&t](std::string_view word) { return t.is_word(word); });
}

bool ends_tables(const token& t)
{
    return is_one_of(t, {"where", "order", "group", "having", "set", "values", "on"});
}

} // namespace

bool token::is_word(std::string_view lower_word) const
{
    return is == kind::word && text.size() == lower_word.size() &&
           std::equal(text.begin(), text.end(), lower_word.begin(), [](unsigned char mine, char its) {
               return static_cast<char>(std::tolower(mine)) == its;
           });
}

statement_text::statement_text(std::string_view text) : tokens_{lexer{text}.tokens()}
{
    if (word_at(0, "select"))
        what_ = verb::select;
    else if (word_at(0, "insert"))
        what_ = verb::insert;
    else if (word_at(0, "update"))
        what_ = verb::update;
    else if (word_at(0, "delete"))
        what_ = verb::erase;
    find_tables();
    inserted_.resize(tokens_.size(), value_kind::text);
    if (what_ == verb::insert)
        type_inserted_values();
}

bool statement_text::word_at(std::size_t at, std::string_view lower_word) const
{
    return at < tokens_.size() && tokens_[at].is_word(lower_word);
}

std::size_t statement_text::find_word(std::string_view lower_word) const
{
    int depth = 0;
    for (std::size_t i = 0; i < tokens_.size(); ++i) {
        depth += tokens_[i].is_sign("(") - tokens_[i].is_sign(")");
        if (depth == 0 && tokens_[i].is_word(lower_word))
            return i;
    }
    return tokens_.size();
}

std::size_t statement_text::opening_of(std::size_t closing) const
{
    int depth = 0;
    for (std::size_t i = closing + 1; i-- > 0;) {
        depth += tokens_[i].is_sign(")") - tokens_[i].is_sign("(");
        if (depth == 0)
            return i;
    }
    return 0;
}

void statement_text::find_tables()
{
    bool is_table_next = false;
    bool is_list = false; // in which a comma brings the next table
    int depth = 0;
    for (std::size_t i = 0; i < tokens_.size(); ++i) {
        const token& t = tokens_[i];
        depth += t.is_sign("(") - t.is_sign(")");
        const bool names_target =
            i == 0 && (t.is_word("update") || (t.is_word("delete") && !word_at(1, "from")));
        if (names_target || is_one_of(t, {"from", "join", "into"})) {
            is_table_next = true;
            is_list = t.is_word("from");
        } else if (is_list && t.is_sign(",")) {
            is_table_next = true;
        } else if (is_table_next && t.is == token::kind::word) {
            is_table_next = false;
            named_table found{lower(t.text), lower(t.text), find_table(t.text)};
            if (i + 1 < tokens_.size() && tokens_[i + 1].is == token::kind::word &&
                !ends_tables(tokens_[i + 1]) && !is_one_of(tokens_[i + 1], {"inner", "left", "join"}))
                found.alias = lower(tokens_[i + 1].text);
            if (first_table_.empty() && depth == 0) {
                first_table_ = found.name;
                first_alias_ = found.alias;
            }
            tables_.push_back(std::move(found));
        } else if (ends_tables(t) || t.is_sign(")")) {
            is_list = false;
        }
    }
}

std::optional<value_kind> statement_text::column_at(std::size_t at) const
{
    const token& t = tokens_[at];
    if (t.is != token::kind::word)
        return {};
    const bool is_qualified = at >= 2 && tokens_[at - 1].is_sign(".");
    const std::string of = is_qualified ? lower(tokens_[at - 2].text) : std::string{};
    for (const named_table& each : tables_)
        if (each.known && (!is_qualified || each.alias == of || each.name == of))
            if (const column* found = each.known->find(t.text))
                return kind_of(found->type);
    const column_use* use = use_of(t.text);
    return use && use->common ? std::optional{kind_of(use->common->type)} : std::nullopt;
}

/// What is calculated from the columns in a stretch of the text.
value_kind statement_text::any_number(std::size_t from, std::size_t to) const
{
    value_kind result = value_kind::text;
    for (std::size_t i = from; i < to; ++i) {
        const auto kind = column_at(i);
        if (kind == value_kind::fraction)
            return *kind;
        if (kind == value_kind::whole)
            result = *kind;
    }
    return result;
}

void statement_text::type_inserted_values()
{
    std::vector<value_kind> columns;
    std::size_t at = 0;
    while (at < tokens_.size() && !tokens_[at].is_sign("("))
        ++at;
    for (++at; at < tokens_.size() && !tokens_[at].is_sign(")"); ++at)
        if (tokens_[at].is == token::kind::word)
            columns.push_back(column_at(at).value_or(value_kind::text));
    for (std::size_t position = 0; ++at < tokens_.size();)
        if (tokens_[at].is_value() && position < columns.size())
            inserted_[at] = columns[position++];
}

value_kind statement_text::operand_at(std::size_t at) const
{
    using enum value_kind;
    const token& last = tokens_[at];
    if (last.is == token::kind::word) {
        const value_kind kind = column_at(at).value_or(text);
        return kind == text && at > 0 && is_arithmetic(tokens_[at - 1]) ? whole : kind;
    }
    if (!last.is_sign(")"))
        return last.is == token::kind::number || last.is == token::kind::slot ? whole : text;
    const std::size_t opening = opening_of(at);
    const value_kind inside = any_number(opening, at);
    if (opening > 0 && word_at(opening - 1, "count"))
        return whole;
    if (opening > 0 && word_at(opening - 1, "sum"))
        return inside == text ? whole : inside;
    if (opening > 0 && word_at(opening - 1, "cast"))
        return word_at(at - 1, "int") || word_at(at - 1, "bigint") ? whole : text;
    return inside;
}

value_kind statement_text::met_at(std::size_t at) const
{
    if (what_ == verb::insert)
        return inserted_[at];
    if (at < 2)
        return value_kind::text;
    const token& before = tokens_[at - 1];
    if (is_comparison(before) || before.is_word("between"))
        return operand_at(at - 2);
    if (before.is_word("and") && at >= 4 && tokens_[at - 3].is_word("between"))
        return operand_at(at - 4);
    if (before.is_sign("(") || before.is_sign(",")) {
        std::size_t opening = at - 1;
        while (opening > 1 && !tokens_[opening].is_sign("("))
            --opening;
        return opening > 1 && tokens_[opening - 1].is_word("in") ? operand_at(opening - 2) : value_kind::text;
    }
    if (is_arithmetic(before))
        return value_kind::whole;
    // The value stands in front: '1'=code_bran.
    if (at + 2 < tokens_.size() && is_comparison(tokens_[at + 1])) {
        std::size_t operand = at + 2;
        while (operand + 2 < tokens_.size() && tokens_[operand + 1].is_sign("."))
            operand += 2;
        return operand_at(operand);
    }
    return value_kind::text;
}

bool statement_text::can_be_repeated() const
{
    if (what_ == verb::select || what_ == verb::erase)
        return true;
    if (what_ != verb::update)
        return false;
    const std::size_t set = find_word("set");
    const std::size_t where = find_word("where");
    std::vector<std::string> assigned;
    for (std::size_t i = set + 1; i + 1 < where; ++i)
        if (tokens_[i + 1].is_sign("=") && (i == set + 1 || tokens_[i - 1].is_sign(",")))
            assigned.push_back(lower(tokens_[i].text));
    // An assignment that reads what the statement itself changes would count twice.
    for (std::size_t i = set + 1; i < where; ++i)
        if (tokens_[i].is == token::kind::word && !tokens_[i + 1].is_sign("=") &&
            std::ranges::count(assigned, lower(tokens_[i].text)))
            return false;
    return true;
}

bool statement_text::is_distinct() const
{
    return what_ == verb::select && word_at(1, "distinct");
}

bool statement_text::is_ordered() const
{
    return find_word("order") < tokens_.size();
}

bool statement_text::brings_rows_as_they_are() const
{
    if (what_ != verb::select || find_word("group") < tokens_.size())
        return false;
    const std::size_t from = find_word("from");
    for (std::size_t i = 1; i + 1 < from; ++i)
        for (const char* aggregate : {"count", "sum", "max", "min", "avg"})
            if (tokens_[i].is_word(aggregate) && tokens_[i + 1].is_sign("("))
                return false;
    return from < tokens_.size();
}

bool statement_text::selects_all_of_first() const
{
    const std::size_t from = find_word("from");
    for (std::size_t i = 1; i < from; ++i) {
        if (!tokens_[i].is_sign("*"))
            continue;
        if (!tokens_[i - 1].is_sign(".") || lower(tokens_[i - 2].text) == first_alias_)
            return true;
    }
    return false;
}

} // namespace orvo
