#include "client/save.h"

#include "client/save_log.h"

#include <algorithm>
#include <stdexcept>

namespace orvo {

save::save(planned_save what, connection& db, connection& local, save_log* log)
    : plan_{std::move(what)}, db_{db}, local_{local}, log_{log}
{
}

save::save(planned_save what, connection& db, connection& local, save_log& log, const save_note& begun)
    : plan_{std::move(what)}, db_{db}, local_{local}, log_{&log}, note_{begun.id}, is_noted_{true},
      was_begun_earlier_{true}, stored_{begun.stored}, stored_words_{begun.stored_words}
{
}

void save::give_up()
{
    if (std::exchange(is_noted_, false))
        log_->end(note_, save_end::given_up);
}

void save::carry_out()
{
    passed_.clear();
    try {
        plan_.act->steps(*this);
    } catch (const db_failure& failure) {
        using enum failure_kind;
        if (is_noted_ && !was_begun_earlier_ &&
            !is_begun()) { // nothing came of it: the next try is another save
            log_->end(note_, save_end::nothing_stored);
            is_noted_ = false;
        }
        const failure_kind kind = failure.kind();
        const bool is_no_answer = kind == line_lost || kind == cancelled || kind == timed_out;
        if (is_in_doubt() && is_no_answer) // as it was before this try
            throw db_failure{outcome_unknown, failure.text(), failure.statement(), failure.code()}.behind(
                stored_words_, doubtful_words_);
        throw;
    }
    is_over_ = true;
    if (is_noted_)
        log_->end(note_, save_end::finished);
}

void save::begin_note()
{
    if (!log_ || is_noted_)
        return;
    note_ = log_->begin(plan_);
    is_noted_ = true;
}

void save::mark(const save_step& step)
{
    doubtful_.clear();
    stored_.append(QLatin1String{step.id});
    stored_words_.append(QString::fromUtf8(step.words));
    if (is_noted_)
        log_->mark(note_, step);
}

template <typename act>
auto save::towards(const save_step& what, act sent)
{
    try {
        return sent();
    } catch (const db_failure& failure) {
        if (failure.kind() == failure_kind::outcome_unknown) {
            doubtful_ = QLatin1String{what.id};
            doubtful_words_ = QString::fromUtf8(what.words);
        }
        throw failure.behind(stored_words_, QString::fromUtf8(what.words));
    }
}

bool save::finds(const lookalikes_of_row& alike)
{
    if (!was_begun_earlier_ && !is_in_doubt())
        return false;
    const std::string* known = plan_.before.find(alike.key);
    const QStringList others =
        known ? QString::fromStdString(*known).split(u',', Qt::SkipEmptyParts) : QStringList{};
    const rows found = db_.read(alike.text, plan_.given);
    for (const auto each : found)
        if (!others.contains(each.text(alike.key)))
            return true;
    return false;
}

void save::run(const save_step& step, connection& on, std::string_view text, const values& more,
               const lookalikes_of_row* alike)
{
    const QString id = QLatin1String{step.id};
    if (passed_.contains(id))
        throw std::logic_error{"a save has two steps named " + id.toStdString()};
    passed_.insert(id);
    if (stored_.contains(id))
        return;
    towards(step, [&] {
        if (alike && (was_begun_earlier_ || doubtful_ == id) && finds(*alike))
            return;
        begin_note();
        values all = plan_.given;
        all.add(more);
        on.write(text, all);
    });
    mark(step);
}

void save::write(const save_step& step, std::string_view text, const values& more)
{
    run(step, db_, text, more, nullptr);
}

void save::write_here(const save_step& step, std::string_view text)
{
    run(step, local_, text, {}, nullptr);
}

void save::write_once(const save_step& step, std::string_view text, const lookalikes_of_row& alike)
{
    run(step, db_, text, {}, &alike);
}

std::vector<rows> save::read_together(const save_step& for_what,
                                      std::initializer_list<connection::query> queries)
{
    return towards(for_what, [&] { return db_.read_together(queries); });
}

namespace {

/// Whether a row holds what `values_of` tells of each field. A number column that holds nothing is 0 there.
template <typename value_of_field>
bool holds(const rows::row& row, const std::vector<changed_record::field>& fields, value_of_field value_of)
{
    return std::ranges::all_of(fields, [&](const changed_record::field& each) {
        const std::string* wanted = value_of(each);
        const QString there = row.text(each.column);
        const QString text = wanted ? QString::fromStdString(*wanted) : there;
        const auto is_nothing = [](const QString& one) { return one.isEmpty() || one == QLatin1String("0"); };
        return there == text || (is_nothing(there) && is_nothing(text));
    });
}

} // namespace

QString save::objection()
{
    if (plan_.act->objection)
        if (const QString why = plan_.act->objection(*this); !why.isEmpty())
            return why;
    const changed_record* changes = plan_.act->changes;
    if (!changes || !stored_.isEmpty())
        return {};
    const rows found = db_.read(changes->text, plan_.given);
    if (found.empty())
        return {};
    const auto fields = changes->fields();
    const bool is_old =
        holds(found.front(), fields, [this](const auto& of) { return plan_.before.find(of.column); });
    const bool is_new =
        holds(found.front(), fields, [this](const auto& of) { return plan_.given.find(of.slot); });
    return is_old || is_new ? QString{} : QStringLiteral("그 사이에 다른 곳에서 같은 내용을 고쳤습니다.");
}

std::vector<changed_record::field> changed_fields(const std::vector<column_value>& columns)
{
    std::vector<changed_record::field> fields;
    for (const column_value& each : columns)
        if (each.column != "regi_date")
            fields.push_back({each.column, each.column});
    return fields;
}

values values_before(const std::vector<column_value>& columns, const rows::row& row)
{
    values before;
    for (const column_value& each : columns)
        before.add({each.column, row.text(each.column)});
    return before;
}

QString keys_of(const rows& found, std::string_view key)
{
    QStringList keys;
    for (const auto row : found)
        keys.append(row.text(key));
    return keys.join(u',');
}

} // namespace orvo
