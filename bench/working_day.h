#pragma once

#include "client/client.h"
#include "dues/rules/settlement.h"
#include "members/rules/member_record.h"

#include <chrono>
#include <optional>
#include <random>

namespace orvo::bench {

using milliseconds = std::chrono::milliseconds;
using seeded = std::mt19937_64;

/// How the one at this workstation works, and how long he bears with a lost line.
struct manner {
    unsigned number = 0;   ///< of the workstation: seeds its day, and makes the numbers of those it registers
    milliseconds pause{0}; ///< on average, between two things that he does
    milliseconds patience{0}; ///< with a line that does not come back
};

/// Sits before the lines: mostly tries again until the server is back, now and then gives up at once.
class operator_at_the_line : public line_watch {
public:
    operator_at_the_line(seeded& chance, milliseconds patience) : chance_{chance}, patience_{patience} {}

    bool try_again(const db_failure& lost) override;
    bool keep_waiting(milliseconds, bool) override { return true; }

    int asked() const { return asked_; } ///< how often, for whoever compares before and behind

private:
    seeded& chance_;
    milliseconds patience_;
    std::chrono::steady_clock::time_point lost_at_, asked_at_;
    bool gives_up_ = false;
    int asked_ = 0;
};

/// What one workstation does all day, through the rules, on members of its own: it searches, opens a member,
/// enters a payment, changes him or registers another. Each thing is a line on the standard output, its
/// fields behind tabs:
///   sample    search|opening|payment|change|registration  milliseconds  whether undisturbed (1, 0)
///   lost      (the line, once each time)
///   payment   pers_no  val_year  amount  stored|unknown|failed  whether the save came to its end (1, 0)
///   look      pers_no  val_year  amount  there|absent: at a payment of unknown outcome
///   change    pers_no  serial    pers_add  stored|unknown|failed
///   member    pers_no  stored|broken: one that was registered
///   failure   text: of a kind that a lost line does not explain
/// No amount comes twice at one workstation.
class working_day {
public:
    working_day(client& c, manner how, QStringList members);

    void work_until(std::chrono::steady_clock::time_point evening);

private:
    struct opened_member {
        QString pers_no;
        QString pers_name;
        QString id;
        QString passwd;
        QString val_year; ///< the newest; empty where he has none
        QString code_member;
    };

    client& c_;
    manner how_;
    QStringList members_;
    seeded chance_;
    operator_at_the_line watch_;
    qint64 serial_ = 0;
    int broken_ = 0; ///< presses of a save that failed

    unsigned one_of(unsigned count);
    void rest();
    template <typename work>
    void timed(const char* what, work run);
    void tell_of(const db_failure& failure) const;

    void take_up_a_member();
    void search(const QString& pers_no);
    std::optional<opened_member> open_member(const QString& pers_no);
    std::optional<db_failure> press(const char* what, const std::function<void()>& store);
    std::vector<panel_row> look_at_payments(const dues_year& year);
    void tell_of_payment(const save& pressed, const std::optional<db_failure>& left, const dues_year& year,
                         qint64 amount);
    void pay(const opened_member& member);
    void change(const opened_member& member);
    void register_another();
};

} // namespace orvo::bench
