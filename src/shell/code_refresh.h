#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <chrono>

namespace orvo {

class client;

/// Brings the workstation's copy of the code tables in line with the server's while the operator rests: one
/// table at a time, without a question and never waiting long, so that nobody notices but by the fees of this
/// year. Begins when someone has logged in, and begins anew from time to time.
class code_refresh : public QObject {
public:
    struct pace {
        std::chrono::milliseconds rest{std::chrono::seconds{2}}; ///< without a key or a click
        std::chrono::milliseconds between{200};                  ///< one table and the next
        std::chrono::milliseconds period{std::chrono::minutes{10}};
    };
    code_refresh(client& c, pace of);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    client& c_;
    const pace pace_;
    QElapsedTimer resting_;
    QTimer next_;
    std::size_t at_ = 0; ///< the table that comes next

    bool may_look() const;
    void look();
};

} // namespace orvo
