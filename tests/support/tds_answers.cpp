#include "support/tds_answers.h"

#include "db/schema/schema.h"
#include "db/statement_text.h"

#include <algorithm>
#include <charconv>

namespace orvo {

namespace {

constexpr int widest_bounded = 4000;

/// What the schema says about columns of a name. Where tables differ in the width, the widest holds all.
const column* known_column(std::string_view name)
{
    const column* widest = nullptr;
    for (const database where : {database::server, database::mail})
        for (const table& each : tables_of(where))
            if (const column* found = each.find(name);
                found &&
                (!widest || (widest->width > 0 && (found->width == 0 || found->width > widest->width))))
                widest = found;
    return widest;
}

/// A column by its name, or by its first value where no table has the name.
tds_column described(std::string_view name, const cell& first)
{
    tds_column result{QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()))};
    if (const column* known = known_column(name)) {
        if (known->type != column_type::text)
            result.integer_bytes = known->type == column_type::money ? 8 : 4;
        else if (known->width <= widest_bounded)
            result.width = known->width;
    } else if (first.is != cell::kind::text) {
        result.integer_bytes = 8;
    } else if (first.text.size() <= widest_bounded) {
        result.width = widest_bounded;
    }
    return result;
}

constexpr QLatin1String catalogue{"INFORMATION_SCHEMA.TABLES"};
constexpr QLatin1String own_catalogue{"own_catalogue"};

/// Sends rows as they come. The columns go before the first, since its values tell their types.
class row_writer : public row_sink {
public:
    row_writer(tds_line& line, std::atomic<int>& rows_left) : line_{line}, rows_left_{rows_left} {}

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

    void end()
    {
        if (line_.is_interrupted())
            return;
        if (columns_.empty())
            send_columns(std::vector<cell>(names_.size()));
        line_.put(done_token(done_with_count, rows_));
    }

private:
    tds_line& line_;
    std::atomic<int>& rows_left_;
    std::vector<std::string> names_;
    std::vector<tds_column> columns_;
    tds_bytes bytes_;
    quint64 rows_ = 0;

    void send_columns(std::span<const cell> first)
    {
        for (std::size_t i = 0; i < first.size(); ++i)
            columns_.push_back(described(names_[i], first[i]));
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
        if (as.integer_bytes > 0) {
            bytes_.byte(as.integer_bytes).number(static_cast<quint64>(integer(field, as)), as.integer_bytes);
            return;
        }
        const QString text =
            field.is == cell::kind::number
                ? QString::number(field.number)
                : QString::fromUtf8(field.text.data(), static_cast<qsizetype>(field.text.size()));
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

    static std::int64_t integer(const cell& field, const tds_column& as)
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
    base_.direct("create temp view own_catalogue as select name as TABLE_NAME from sqlite_master "
                 "where type='table'");
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
        base_.direct(in_embedded_words(batch).toStdString());
        break;
    case batch_kind::statement:
        return run_statement(with_slots(QString{batch}.replace(catalogue, own_catalogue)));
    }
    line_.put(done_token(done_plainly));
}

void tds_answers::run_statement(const std::vector<slotted_batch>& rows)
{
    const slotted_batch& first = rows.front();
    switch (statement_text{first.text}.what()) {
    case verb::select: {
        row_writer writer{line_, rows_left_};
        base_.read_each(first.text, first.given, writer);
        return writer.end();
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
