#include "support/tds_answers.h"

#include "db/schema/schema.h"
#include "db/statement_text.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <map>

namespace orvo {

namespace {

constexpr int widest_bounded = 4000;

/// The types of the tables' columns that are not the client's own, as the register declares them.
using foreign_types = std::map<std::string, QString>;

foreign_types foreign_types_of(connection& base, const statement_text& statement)
{
    foreign_types all;
    for (const token& each : statement.tokens())
        if (each.is == token::kind::word && find_table(each.text))
            for (const auto row : base.read("select name,type from pragma_table_info('{table}')",
                                            {{"table", QString::fromStdString(each.text)}})) {
                const QString type = row.text("type").toLower();
                if (type != QLatin1String{"integer"} && type != QLatin1String{"text"})
                    all.emplace(row.text("name").toStdString(), type);
            }
    return all;
}

/// What the schema says about a column: of the table that the statement names where tables differ.
const column* known_column(const statement_text& statement, std::string_view name)
{
    if (const column_use* use = use_of(name); use && use->common)
        return use->common;
    for (const token& each : statement.tokens())
        if (const table* named = each.is == token::kind::word ? find_table(each.text) : nullptr)
            if (const column* found = named->find(name))
                return found;
    return nullptr;
}

void describe(tds_column& result, const QString& foreign)
{
    using enum tds_column::kind;
    if (foreign.contains(QLatin1String{"char"})) {
        result.is = padded;
        result.width = foreign.section(u'(', 1).section(u')', 0, 0).toInt();
    } else {
        result.is = foreign.startsWith(QLatin1String{"money"})     ? money
                    : foreign.startsWith(QLatin1String{"decimal"}) ? decimal
                                                                   : floating;
    }
}

/// A column by its name, or by its first value where no table has the name.
tds_column described(const statement_text& statement, std::string_view name, const cell& first)
{
    using enum tds_column::kind;
    tds_column result{QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()))};
    if (const column* known = known_column(statement, name)) {
        if (known->type == column_type::fraction) {
            result.is = floating;
        } else if (known->type != column_type::text) {
            result.is = integer;
            result.integer_bytes = known->type == column_type::money ? 8 : 4;
        } else if (known->width <= widest_bounded) {
            result.width = known->width;
        }
    } else if (first.is != cell::kind::text) {
        result.is = integer;
        result.integer_bytes = 8;
    } else if (first.text.size() <= widest_bounded) {
        result.width = widest_bounded;
    }
    return result;
}

constexpr std::pair<QLatin1String, QLatin1String> catalogues[] = {
    {QLatin1String{"INFORMATION_SCHEMA.TABLES"}, QLatin1String{"own_tables"}},
    {QLatin1String{"INFORMATION_SCHEMA.COLUMNS"}, QLatin1String{"own_columns"}}};

/// Sends rows as they come. The columns go before the first, since its values tell their types.
class row_writer : public row_sink {
public:
    row_writer(tds_line& line, std::atomic<int>& rows_left, const statement_text& statement,
               foreign_types foreign)
        : line_{line}, rows_left_{rows_left}, statement_{statement}, foreign_{std::move(foreign)}
    {
    }

    void begin(const column_names& names) override { names_.assign(names.begin(), names.end()); }

    bool take(std::span<const cell> row) override
    {
        if (columns_.empty())
            send_columns(row);
        if (rows_left_ >= 0 && rows_left_-- == 0) {
            line_.end_in_the_middle();
            return false;
        }
        ++rows_;
        bytes_.clear();
        const bool has_null =
            std::any_of(row.begin(), row.end(), [](const cell& each) { return each.is == cell::kind::null; });
        bytes_.byte(has_null ? 0xd2 : 0xd1);
        if (has_null)
            add_nulls(row);
        for (std::size_t i = 0; i < row.size(); ++i)
            if (row[i].is != cell::kind::null)
                add(row[i], columns_[i]);
        return line_.put(bytes_);
    }

    void end(bool more_to_come)
    {
        if (line_.is_interrupted())
            return;
        if (columns_.empty())
            send_columns(std::vector<cell>(names_.size()));
        line_.put(done_token(done_with_count | (more_to_come ? done_with_more : 0), rows_));
    }

private:
    tds_line& line_;
    std::atomic<int>& rows_left_;
    const statement_text& statement_;
    foreign_types foreign_;
    std::vector<std::string> names_;
    std::vector<tds_column> columns_;
    tds_bytes bytes_;
    quint64 rows_ = 0;

    void send_columns(std::span<const cell> first)
    {
        for (std::size_t i = 0; i < first.size(); ++i) {
            columns_.push_back(described(statement_, names_[i], first[i]));
            if (const auto foreign = foreign_.find(names_[i]); foreign != foreign_.end())
                describe(columns_.back(), foreign->second);
        }
        line_.put(columns_token(columns_));
    }

    void add_nulls(std::span<const cell> row)
    {
        for (std::size_t from = 0; from < row.size(); from += 8) {
            int bits = 0;
            for (std::size_t i = from; i < std::min(from + 8, row.size()); ++i)
                bits |= (row[i].is == cell::kind::null) << (i - from);
            bytes_.byte(bits);
        }
    }

    void add(const cell& field, const tds_column& as)
    {
        using enum tds_column::kind;
        QString text = field.is == cell::kind::number
                           ? QString::number(field.number)
                           : QString::fromUtf8(field.text.data(), static_cast<qsizetype>(field.text.size()));
        switch (as.is) {
        case integer:
            bytes_.byte(as.integer_bytes).number(static_cast<quint64>(whole(field, as)), as.integer_bytes);
            return;
        case floating:
            bytes_.byte(8).number(std::bit_cast<quint64>(text.toDouble()), 8);
            return;
        case money: { // ten-thousandths, the upper half first
            const auto parts = static_cast<quint64>(std::llround(text.toDouble() * 10'000));
            bytes_.byte(8).number(parts >> 32, 4).number(parts & 0xffffffff, 4);
            return;
        }
        case decimal: {
            const double hundredths = text.toDouble() * std::pow(10, tds_column::decimal_places);
            bytes_.byte(9)
                .byte(hundredths >= 0)
                .number(static_cast<quint64>(std::llabs(std::llround(hundredths))), 8);
            return;
        }
        case padded:
            text = text.leftJustified(as.width);
            break;
        case varying:
            break;
        }
        const auto size = static_cast<quint64>(text.size()) * 2;
        if (as.width == tds_column::unbounded) {
            bytes_.number(size, 8);
            if (size > 0)
                bytes_.number(size, 4).text(text);
            bytes_.number(0, 4);
            return;
        }
        if (text.size() > as.width)
            throw tds_error{8152, QStringLiteral("String or binary data would be truncated."), 16, 14};
        bytes_.number(size, 2).text(text);
    }

    static std::int64_t whole(const cell& field, const tds_column& as)
    {
        std::int64_t value = field.number;
        if (field.is == cell::kind::text) {
            const char* end = field.text.data() + field.text.size();
            if (std::from_chars(field.text.data(), end, value).ptr != end)
                throw db_failure{
                    failure_kind::conversion,
                    u'"' + QString::fromUtf8(field.text.data(), static_cast<qsizetype>(field.text.size())) +
                        u'"'};
        }
        if (as.integer_bytes == 4 && !std::in_range<std::int32_t>(value))
            throw db_failure{failure_kind::overflow, {}};
        return value;
    }
};

} // namespace

tds_answers::tds_answers(tds_line& line, connection base, std::atomic<int>& rows_left)
    : line_{line}, base_{std::move(base)}, rows_left_{rows_left}
{
    base_.direct("pragma synchronous=off"); // nothing of a test outlives it
    base_.direct("create temp view own_tables as select name as TABLE_NAME from sqlite_master "
                 "where type='table'");
    // The client's own tables bound their texts by checks.
    base_.direct(
        "create temp view own_columns as select m.name as TABLE_NAME,p.name as COLUMN_NAME,"
        "case lower(p.type) when 'integer' then 'int' when 'text' then 'nvarchar' when 'real' then 'float' "
        "else lower(p.type) end as DATA_TYPE,"
        "case when m.sql like '%length('||p.name||')<=%' then cast(substr(m.sql,instr(m.sql,"
        "'length('||p.name||')<=')+length('length('||p.name||')<='),9) as integer) else -1 end "
        "as CHARACTER_MAXIMUM_LENGTH,null as NUMERIC_SCALE "
        "from main.sqlite_master m,pragma_table_info(m.name) p where m.type='table'");
}

void tds_answers::answer(const QString& batch)
{
    or_answer_failure([&] { run(batch); });
}

void tds_answers::or_answer_failure(const std::function<void()>& act)
{
    try {
        act();
    } catch (const tds_error& error) {
        answer_with(error);
    } catch (const db_failure& failure) {
        answer_with(error_of(failure));
    }
}

void tds_answers::answer_with(const tds_error& error)
{
    line_.put(error_token(error));
    line_.put(done_token(done_with_error));
}

void tds_answers::run(const QString& batch)
{
    switch (kind_of_batch(batch)) {
    case batch_kind::setting:
        break;
    case batch_kind::begin:
        begin();
        break;
    case batch_kind::commit:
        end_transaction(true);
        break;
    case batch_kind::roll_back:
        end_transaction(false);
        break;
    case batch_kind::definition:
        for (const QString& each : in_embedded_words(batch))
            base_.direct(each.toStdString());
        break;
    case batch_kind::statement: {
        QString asked = batch;
        for (const auto& [theirs, ours] : catalogues)
            asked.replace(theirs, ours);
        return run_statements(statements_of(asked));
    }
    }
    line_.put(done_token(done_plainly));
}

/// Reads may come several in a batch, and end with the first that fails; a write stands alone.
void tds_answers::run_statements(const QStringList& statements)
{
    for (qsizetype at = 0; at < statements.size(); ++at) {
        const auto rows = with_slots(statements[at]);
        if (statements.size() > 1 && statement_text{rows.front().text}.what() != verb::select)
            throw syntax_error(QStringLiteral(";"));
        run_statement(rows, at + 1 < statements.size());
    }
}

void tds_answers::run_statement(const std::vector<slotted_batch>& rows, bool more_to_come)
{
    const slotted_batch& first = rows.front();
    const statement_text statement{first.text};
    switch (statement.what()) {
    case verb::select: {
        row_writer writer{line_, rows_left_, statement, foreign_types_of(base_, statement)};
        base_.read_each(first.text, first.given, writer);
        return writer.end(more_to_come);
    }
    case verb::other:
        throw syntax_error(QString::fromStdString(first.text).section(u' ', 0, 0));
    default:
        line_.put(done_token(done_with_count, static_cast<quint64>(write(rows))));
    }
}

qint64 tds_answers::write(const std::vector<slotted_batch>& rows)
{
    qint64 written = 0;
    base_.direct("savepoint rows"); // all of them or none
    try {
        for (const slotted_batch& each : rows)
            written += base_.write(each.text, each.given);
    } catch (const db_failure&) {
        base_.direct("rollback to rows");
        base_.direct("release rows");
        throw;
    }
    base_.direct("release rows");
    return written;
}

void tds_answers::begin()
{
    if (++depth_ > 1)
        return;
    base_.direct("begin");
    line_.put(transaction_begun_token());
}

void tds_answers::end_transaction(bool commits)
{
    if (depth_ == 0)
        throw tds_error{commits ? 3902 : 3903,
                        QStringLiteral("The %1 TRANSACTION request has no corresponding BEGIN TRANSACTION.")
                            .arg(QLatin1String{commits ? "COMMIT" : "ROLLBACK"})};
    depth_ = commits ? depth_ - 1 : 0;
    if (depth_ > 0)
        return;
    base_.direct(commits ? "commit" : "rollback");
    line_.put(transaction_over_token(commits));
}

void tds_answers::answer_transaction(std::string_view message)
{
    constexpr int to_begin = 5;
    constexpr int to_commit = 7;
    constexpr int to_roll_back = 8;
    const std::string_view request = behind_headers(message);
    const auto wish = number_at(request, 0, 2);
    or_answer_failure([&] {
        if (wish == to_commit || wish == to_roll_back)
            end_transaction(wish == to_commit);
        else if (wish != to_begin)
            throw tds_error{3986, QStringLiteral("The transaction manager request is not known.")};
        // One that ends a transaction may ask for the next in the same breath: a bit behind the name.
        if (wish == to_begin || number_at(request, 3 + number_at(request, 2, 1), 1) & 1)
            begin();
        line_.put(done_token(done_plainly));
    });
}

} // namespace orvo
