#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>
#include <vector>

class QWidget;

namespace orvo {

/// Walks through the running program step by step, as an operator would: waits until the place of a step is
/// there, takes a picture of it, then acts. Ends the program when it has come to the end, or stands too long
/// in one place.
class walk : public QObject {
public:
    struct step {
        QString picture;                 ///< file name without number; empty: none is taken
        std::function<QWidget*()> place; ///< null until it is there
        std::function<void(QWidget*)> act;
    };

    explicit walk(const QString& folder);

    void add(step next) { steps_.push_back(std::move(next)); }
    void start();
    /// Whether every step was taken.
    bool is_done() const { return at_ == steps_.size(); }

private:
    QString folder_;
    std::vector<step> steps_;
    std::size_t at_ = 0;
    int waited_ = 0;
    int seen_ = 0;
    int pictures_ = 0;
    QTimer clock_;

    void look();
    void take_picture(const QString& name, QWidget* place);
};

} // namespace orvo
