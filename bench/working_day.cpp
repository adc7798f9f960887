#include "working_day.h"

#include "client_saves.h"

#include "base/amount.h"
#include "dues/rules/payments.h"
#include "members/rules/member_pages.h"
#include "members/rules/member_search.h"
#include "members/rules/member_update.h"

#include <algorithm>
#include <cstdio>
#include <thread>

namespace orvo::bench {

using std::chrono::steady_clock;

namespace {

const QString step_of_payment = QStringLiteral("회비 입금");
const QString unknown = QStringLiteral("unknown");
constexpr qint64 least_amount = 1000; // won
constexpr milliseconds between_tries{200};
constexpr milliseconds new_loss_after{5000}; // a line that is asked about again that much later was back
constexpr int presses_of_a_save = 100;

void print(const QStringList& fields)
{
    std::puts(fields.join(u'\t').toUtf8().constData());
}

/// What became of a step of the save that was left by that failure.
QString outcome_of(const QString& step, const save& pressed, const std::optional<db_failure>& left)
{
    if (pressed.stored().contains(step))
        return QStringLiteral("stored");
    const bool in_doubt = left && left->kind() == failure_kind::outcome_unknown && left->missing() == step;
    return in_doubt ? unknown : QStringLiteral("failed");
}

QString flag(bool set)
{
    return set ? QStringLiteral("1") : QStringLiteral("0");
}

} // namespace

bool operator_at_the_line::try_again(const db_failure&)
{
    const auto now = steady_clock::now();
    if (asked_++ == 0 || now - asked_at_ > new_loss_after) {
        print({QStringLiteral("lost")});
        lost_at_ = now;
        gives_up_ = chance_() % 3 == 0;
    }
    asked_at_ = now;
    if (std::exchange(gives_up_, false) || now - lost_at_ > patience_)
        return false;
    std::this_thread::sleep_for(between_tries);
    return true;
}

working_day::working_day(client& c, manner how, QStringList members)
    : c_{c}, how_{how}, members_{std::move(members)}, chance_{how.number}, watch_{chance_, how.patience}
{
    c_.watch_lines(&watch_);
}

void working_day::work_until(steady_clock::time_point evening)
{
    while (steady_clock::now() < evening) {
        try {
            take_up_a_member();
        } catch (const db_failure& failure) { // he gave up, and turns to somebody else
            tell_of(failure);
            rest();
        }
    }
}

unsigned working_day::one_of(unsigned count)
{
    return static_cast<unsigned>(chance_() % count);
}

void working_day::rest()
{
    const auto most = static_cast<unsigned>(how_.pause.count()) * 2;
    std::this_thread::sleep_for(milliseconds{one_of(most + 1)});
}

/// Runs it and tells how long it took and whether the line held; what it throws goes on.
template <typename work>
void working_day::timed(const char* what, work run)
{
    const int before = watch_.asked() + broken_;
    const auto started = steady_clock::now();
    run();
    const std::chrono::duration<double, std::milli> took = steady_clock::now() - started;
    print({QStringLiteral("sample"), QString::fromLatin1(what), QString::number(took.count(), 'f', 3),
           flag(watch_.asked() + broken_ == before)});
}

void working_day::tell_of(const db_failure& failure) const
{
    if (failure.kind() != failure_kind::line_lost && failure.kind() != failure_kind::outcome_unknown)
        print({QStringLiteral("failure"), failure.text().simplified(), failure.statement().simplified()});
}

void working_day::take_up_a_member()
{
    const QString pers_no = members_[one_of(static_cast<unsigned>(members_.size()))];
    search(pers_no);
    rest();
    const auto member = open_member(pers_no);
    rest();
    if (!member)
        return;
    const unsigned what = one_of(20);
    if (what < 12 && !member->val_year.isEmpty())
        pay(*member);
    else if (what < 17)
        change(*member);
    else
        register_another();
    rest();
}

/// As search_dlg does, up to the first page; mostly by the name, as most are asked for.
void working_day::search(const QString& pers_no)
{
    const auto known = one_of(4) == 0 ? std::nullopt : ask(c_.db_conn, row_on_server(pers_no));
    const member_query query =
        known ? search_query(search_item::name, known->front().text("pers_name"), c_.session_branch)
              : search_query(search_item::resident_number, pers_no, c_.session_branch);
    timed("search", [&] {
        copy_members(c_.db_conn, c_.local_conn, query);
        member_pages{c_.local_conn}.page(1);
    });
}

/// As the console does at a click. Nothing where the copy does not hold him.
std::optional<working_day::opened_member> working_day::open_member(const QString& pers_no)
{
    opened_member member{pers_no, {}, {}, {}, {}, {}};
    bool found = false;
    timed("opening", [&] {
        const auto row = read_member(c_.local_conn, pers_no);
        if (!row)
            return;
        found = true;
        member.pers_name = row->front().text("pers_name");
        const member_records records = open_records(c_.db_conn, pers_no);
        member.id = records.login.id;
        member.passwd = records.login.passwd;
        if (!records.years.empty()) {
            member.val_year = records.years.back().cells.front();
            member.code_member = records.years.back().key;
        }
        dues_lines(c_.db_conn, pers_no, member.val_year);
    });
    if (!found)
        print({QStringLiteral("failure"), QStringLiteral("a search did not find its member"), pers_no});
    return found ? std::optional{member} : std::nullopt;
}

/// What the save ended by; nothing where it came to its end. Given up half way it is pressed again, or left
/// alone, as it happens.
std::optional<db_failure> working_day::press(const char* what, const std::function<void()>& store)
{
    std::optional<db_failure> left;
    timed(what, [&] {
        for (int i = 0; i < presses_of_a_save; ++i) {
            try {
                store();
                left.reset();
                return;
            } catch (const db_failure& failure) {
                tell_of(failure);
                left = failure;
                ++broken_;
                if (one_of(2) == 0)
                    return;
                std::this_thread::sleep_for(between_tries);
            }
        }
    });
    return left;
}

/// Who gave up the line looks later.
std::vector<panel_row> working_day::look_at_payments(const dues_year& year)
{
    try {
        return dues_lines(c_.db_conn, year.pers_no, year.val_year);
    } catch (const db_failure&) {
        std::this_thread::sleep_for(between_tries);
        return dues_lines(c_.db_conn, year.pers_no, year.val_year);
    }
}

void working_day::tell_of_payment(const save& pressed, const std::optional<db_failure>& left,
                                  const dues_year& year, qint64 amount)
{
    const QString outcome = outcome_of(step_of_payment, pressed, left);
    const QString whole = QString::number(amount);
    print({QStringLiteral("payment"), year.pers_no, year.val_year, whole, outcome, flag(!left)});
    if (outcome != unknown)
        return;
    bool there = false;
    for (const panel_row& line : look_at_payments(year))
        there = there || line.cells.back() == with_separators(amount);
    print({QStringLiteral("look"), year.pers_no, year.val_year, whole,
           there ? QStringLiteral("there") : QStringLiteral("absent")});
}

void working_day::pay(const opened_member& member)
{
    const dues_year year{member.pers_no, member.val_year};
    const qint64 amount = least_amount + ++serial_;
    const payment paid{c_.today(), {}, QString::number(amount), QStringLiteral("3")};
    save payment_save = c_.begin(add_payment(year, member.code_member, paid, c_.today(), {}));
    const auto left = press("payment", [&] {
        payment_save.carry_out();
        try { // the panels, before the dialog is gone; on their own, since the payment is stored
            dues_years(c_.db_conn, year.pers_no);
            dues_lines(c_.db_conn, year.pers_no, year.val_year);
        } catch (const db_failure& failure) {
            tell_of(failure);
        }
    });
    tell_of_payment(payment_save, left, year, amount);
}

void working_day::change(const opened_member& member)
{
    member_data typed = filled_form().member;
    typed.pers_no1 = member.pers_no.left(6);
    typed.pers_no2 = member.pers_no.mid(6);
    typed.pers_name = member.pers_name;
    typed.pers_add = QStringLiteral("서울 강남구 역삼동 %1-%2").arg(how_.number).arg(++serial_);
    const auto columns = edited_columns(typed, c_.today());
    save edit = c_.begin(change_member(member.pers_no, columns, member.id, member.passwd, {}));
    const auto left = press("change", [&] {
        const auto on_server = ask(c_.db_conn, row_on_server(member.pers_no));
        const auto shown = read_member(c_.local_conn, member.pers_no);
        newer_values(on_server->front(), shown->front(), columns);
        edit.carry_out();
    });
    print({QStringLiteral("change"), member.pers_no, QString::number(serial_), typed.pers_add,
           outcome_of(QStringLiteral("회원 정보"), edit, left)});
}

void working_day::register_another()
{
    new_member typed = filled_form();
    const qint64 amount = least_amount + ++serial_;
    typed.member.pers_no1 = QStringLiteral("%1%2").arg(50 + serial_ % 49).arg(QStringLiteral("0101"));
    typed.member.pers_no2 = QStringLiteral("9%1%2")
                                .arg(how_.number, 2, 10, QLatin1Char('0'))
                                .arg(serial_, 4, 10, QLatin1Char('0'));
    typed.agree_pay = QString::number(amount);
    const QString pers_no = typed.member.pers_no();
    save registration = c_.begin(register_member(typed, c_.today()));
    const auto left = press("registration", [&] {
        if (!registration.is_begun() && is_registered(c_.db_conn, pers_no))
            throw db_failure{failure_kind::duplicate, QStringLiteral("a new member is there already")};
        registration.carry_out();
    });
    tell_of_payment(registration, left, {pers_no, c_.today().left(4)}, amount);
    print({QStringLiteral("member"), pers_no, left ? QStringLiteral("broken") : QStringLiteral("stored")});
    if (!left)
        members_.append(pers_no);
}

} // namespace orvo::bench
