#pragma once

#include <QObject>

#include <functional>

class QWidget;

namespace orvo {

/// While it stands, the program paints and hears one thing: the way out. All other keys, clicks, shortcuts
/// and closings are dropped, so that nothing starts while a statement is under way.
class input_gate : public QObject {
public:
    /// `way_out` is the widget whose clicks pass (null: none); Esc calls `escape`.
    input_gate(QWidget* way_out, std::function<void()> escape);
    ~input_gate() override;

    /// Lets painting and the way out happen.
    void look_up();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* way_out_;
    std::function<void()> escape_;
};

} // namespace orvo
