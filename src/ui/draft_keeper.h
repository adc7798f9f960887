#pragma once

#include "client/drafts.h"

#include <QStringList>
#include <QTimer>

class QWidget;

namespace orvo {

class client;

/// Keeps what is typed into a form and not saved, so that a crash, a lost server or a closed window costs
/// nothing. A member of its form, behind the pointers to the controls.
class draft_keeper {
public:
    /// `but_not` are fields that are never written down.
    draft_keeper(client& c, QWidget& form, QStringList but_not);
    /// What changed a moment ago is kept still.
    ~draft_keeper();

    /// From now on every change is kept. What stands in the form now counts as nothing typed.
    void start();
    /// The draft of an earlier time; nothing where there is none.
    std::optional<draft> kept() const;
    /// The draft is saved, or given up.
    void forget();

private:
    client& c_;
    QWidget& form_;
    QStringList but_not_;
    QJsonObject untouched_;
    QTimer soon_;
    bool is_watching_ = false;

    void keep();
};

} // namespace orvo
