#pragma once

#include <QObject>

#include <functional>
#include <initializer_list>
#include <map>
#include <vector>

class QWidget;

namespace orvo {

/// Enter goes to the next field of a form: along the chains that are given, and elsewhere as Tab does. Enter
/// on a button presses it. Fields whose Enter means something else are left alone.
class enter_walk : public QObject {
public:
    explicit enter_walk(QWidget& form);

    /// The next field of one, or none: then it goes on as Tab does.
    using way = std::function<QWidget*()>;

    void chain(std::initializer_list<QWidget*> fields);
    /// Asked at each Enter in `field`.
    void ask(QWidget* field, way onward) { next_[field] = std::move(onward); }
    void leave_alone(QWidget* field) { own_.push_back(field); }
    /// Takes in all fields that the form has by now.
    void begin();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget& form_;
    std::map<const QWidget*, way> next_;
    std::vector<const QWidget*> own_;

    QWidget* next_of(QWidget* field) const;
};

} // namespace orvo
