#pragma once

#include <QDateTime>
#include <QString>

#include <chrono>
#include <map>

namespace orvo {

class client;

/// Wrong passwords, by the id with which they were typed, whether somebody has it or not. From the fifth on
/// the next try must wait, five seconds and then twice as long each time, up to a minute. Nothing ends the
/// tries; half an hour without one makes them forgotten. They are kept over a restart, in the local file: of
/// the ids nothing but a mark that does not tell them, since many are passwords in the wrong field.
class login_attempts {
public:
    explicit login_attempts(client& c) : c_{c} {}

    /// Reads what the local file keeps.
    void load();
    /// How long that id has to wait now.
    std::chrono::milliseconds wait_left(const QString& id);
    void count_wrong(const QString& id);
    void forget(const QString& id);

private:
    struct wrong {
        int times = 0;
        QDateTime last_at;
    };

    client& c_;
    std::map<QString, wrong> by_mark_;

    bool is_forgotten(const wrong& one) const;
};

} // namespace orvo
