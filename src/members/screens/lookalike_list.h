#pragma once

#include <QTimer>
#include <QWidget>

class QLabel;
class QLineEdit;
class QListWidget;

namespace orvo {

class client;
struct member_fields;

/// Beside the registration form: members of the register who look like the one that is being typed. A hint
/// that refuses nothing, asks nothing and never waits long for a server.
class lookalike_list : public QWidget {
public:
    lookalike_list(client& c, const member_fields& fields);

private:
    client& c_;
    QLineEdit *name_txt_, *pers_no1_txt_, *pers_no2_txt_;
    QLabel* hint_;
    QListWidget* list_;
    QTimer soon_;

    void look();
};

} // namespace orvo
