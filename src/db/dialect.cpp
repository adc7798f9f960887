#include "db/dialect.h"

#include "base/decimal.h"
#include "db/schema/schema.h"

#include <algorithm>

namespace orvo {

namespace {

std::string quoted(const std::string& text)
{
    std::string result = "'";
    append_doubled(result, text);
    return result + '\'';
}

/// Writes the tokens of one statement in the dialect of one engine.
class writer {
public:
    writer(const statement_text& statement, engine kind, database where, bool letters)
        : statement_{statement}, tokens_{statement.tokens()}, kind_{kind}, where_{where}, letters_{letters}
    {
    }

    ready_statement write()
    {
        for (at_ = 0; at_ < tokens_.size(); ++at_)
            write_token();
        close_join();
        if (statement_.brings_rows_as_they_are())
            add_order();
        return std::move(result_);
    }

    /// For the engine whose texts they are. It converts an empty text to 0 itself, and refuses what is no
    /// number, so that a value in quotes is a text there whatever it meets.
    ready_statement keep(std::string_view text)
    {
        std::size_t from = 0;
        const auto place = [&](parameter::kind is, const std::string& slot) {
            const std::size_t at = text.find('{', from);
            result_.stretches.emplace_back(text.substr(from, at - from));
            result_.parameters.push_back({is, {{true, slot}}});
            from = at + slot.size() + 2;
        };
        for (at_ = 0; at_ < tokens_.size(); ++at_) {
            if (tokens_[at_].is == token::kind::slot)
                place(slot_kind(), tokens_[at_].text);
            for (const literal_piece& piece : tokens_[at_].pieces)
                if (piece.is_slot)
                    place(parameter::kind::text, piece.text);
        }
        result_.stretches.emplace_back(text.substr(from));
        return std::move(result_);
    }

private:
    const statement_text& statement_;
    const std::vector<token>& tokens_;
    engine kind_;
    database where_;
    bool letters_;
    std::size_t at_ = 0;
    bool in_joined_condition_ = false;
    ready_statement result_;

    bool to_postgresql() const { return kind_ == engine::postgresql; }

    void put(std::string_view text)
    {
        const bool tight = result_.sql.empty() || result_.sql.back() == '.' || text == ".";
        if (!tight)
            result_.sql += ' ';
        result_.sql += text;
    }

    void put_parameter(parameter::kind is, std::vector<literal_piece> pieces)
    {
        result_.parameters.push_back({is, std::move(pieces)});
        put((to_postgresql() ? "$" : "?") + std::to_string(result_.parameters.size()));
    }

    void write_token()
    {
        const token& t = tokens_[at_];
        switch (t.is) {
        case token::kind::literal:
            return write_literal(t);
        case token::kind::slot:
            return put_parameter(slot_kind(), {{true, t.text}});
        case token::kind::number:
            return put(meets_text() ? quoted(t.text) : t.text);
        case token::kind::sign:
            return put(t.text);
        case token::kind::word:
            return write_word(t);
        }
    }

    /// A bare number compared with a text column: the engines would compare two types, or refuse to.
    bool meets_text() const
    {
        return at_ >= 2 && statement_.what() != verb::insert && tokens_[at_ - 1].is == token::kind::sign &&
               std::string_view{"=<><=>="}.find(tokens_[at_ - 1].text) != std::string_view::npos &&
               statement_.column_at(at_ - 2) == value_kind::text;
    }

    parameter::kind slot_kind() const
    {
        return meets_text() ? parameter::kind::digits : parameter::kind::plain_number;
    }

    void write_literal(const token& t)
    {
        const value_kind met = statement_.met_at(at_);
        const bool has_slot =
            std::any_of(t.pieces.begin(), t.pieces.end(), [](const literal_piece& p) { return p.is_slot; });
        if (!has_slot)
            put_constant(t.pieces.empty() ? std::string{} : t.pieces.front().text, met);
        else if (met == value_kind::fraction)
            put_fraction(t.pieces);
        else
            put_parameter(met == value_kind::whole ? parameter::kind::number : parameter::kind::text,
                          t.pieces);
        if (at_ > 0 && tokens_[at_ - 1].is_word("like") && to_postgresql())
            put("escape ''"); // a backslash is a letter like any other
    }

    /// A text on its way, so that no digit is lost.
    void put_fraction(const std::vector<literal_piece>& pieces)
    {
        put("cast(");
        put_parameter(parameter::kind::fraction, pieces);
        put(to_postgresql() ? "as double precision)" : "as real)");
    }

    void put_constant(const std::string& text, value_kind met)
    {
        const std::string_view digits = without_blanks(text);
        const auto number = read_decimal(digits);
        if (met == value_kind::text || (!digits.empty() && !number))
            put(quoted(text));
        else if (met == value_kind::fraction)
            put(digits.empty() ? "0" : digits);
        else
            put(number && !number->is_whole ? quoted(text) : std::to_string(number ? number->whole : 0));
    }

    void write_word(const token& t)
    {
        if (t.is_word("like") && to_postgresql()) {
            if (statement_.operand_at(at_ - 1) != value_kind::text)
                put("::text");
            return put(letters_ ? "ilike" : "like");
        }
        if (t.is_word("on") && kind_ == engine::embedded)
            return write_on();
        if (in_joined_condition_ && ends_condition(at_))
            close_join();
        if (t.is_word("as") && to_postgresql() && is_text_cast()) {
            result_.sql.insert(result_.sql.rfind('(') + 1, " nullif(");
            put(", '' )");
        }
        put(t.text);
        if (at_ == 0 && t.is_word("delete") && !tokens_[1].is_word("from"))
            put("from");
    }

    bool is_text_cast() const
    {
        std::size_t opening = at_;
        while (opening > 0 && tokens_[opening].is == token::kind::word)
            opening -= tokens_[opening - 1].is_sign(".") ? 2 : 1;
        return opening > 0 && tokens_[opening].is_sign("(") && tokens_[opening - 1].is_word("cast") &&
               statement_.operand_at(at_ - 1) == value_kind::text;
    }

    bool ends_condition(std::size_t at) const
    {
        for (const char* word : {"on", "inner", "where", "order", "group"})
            if (tokens_[at].is_word(word))
                return true;
        return false;
    }

    /// "a join b join c on x on y" is known to all engines but the embedded one, which takes "on (x) and
    /// (y)". All joins are inner, so that the conditions may stand together.
    void write_on()
    {
        if (in_joined_condition_) {
            put(") and (");
            return;
        }
        std::size_t end = at_ + 1;
        while (end < tokens_.size() && !ends_condition(end))
            ++end;
        put("on");
        if (end < tokens_.size() && tokens_[end].is_word("on")) {
            in_joined_condition_ = true;
            put("(");
        }
    }

    void close_join()
    {
        if (in_joined_condition_)
            put(")");
        in_joined_condition_ = false;
    }

    /// Rows that are alike in the statement's order, or that have none, come in key order: so no update makes
    /// a panel jump.
    void add_order()
    {
        const table* first = find_table(where_, statement_.first_table());
        if (!first)
            return;
        const bool ordered = statement_.is_ordered();
        if (statement_.is_distinct() && !statement_.selects_all_of_first()) {
            if (!ordered)
                put("order by 1");
            return;
        }
        std::vector<std::string_view> key = first->key;
        if (key.empty() && kind_ == engine::embedded && !statement_.is_distinct())
            key.push_back("rowid"); // the order of writing
        for (std::size_t i = 0; i < key.size(); ++i) {
            put(i == 0 && !ordered ? "order by" : ",");
            put(statement_.first_alias() + '.' + std::string{key[i]});
        }
    }
};

} // namespace

ready_statement translate(const statement_text& statement, std::string_view text, engine kind, database where,
                          bool letters)
{
    writer made{statement, kind, where, letters};
    ready_statement result = kind == engine::sqlserver ? made.keep(text) : made.write();
    result.text = text;
    result.what = statement.what();
    result.repeatable = statement.can_be_repeated();
    return result;
}

bool has_letter_variant(const statement_text& statement, engine kind)
{
    return kind == engine::postgresql && std::any_of(statement.tokens().begin(), statement.tokens().end(),
                                                     [](const token& t) { return t.is_word("like"); });
}

bool has_cased_letter(std::string_view utf8)
{
    for (const QChar c : QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size())))
        if (c.toLower() != c.toUpper())
            return true;
    return false;
}

} // namespace orvo
