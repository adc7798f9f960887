#pragma once

#include "db/connection.h"
#include "setup/refusal.h"

#include <QString>

namespace orvo::setup {

struct operator_account {
    QString id;
    QString password;
    QString name;
    QString email;
    QString send_id; ///< at the message gateway
    int branch = 0;  ///< 0 is the head office
    bool administration = false;
    bool education = false;
    bool third_right = false;
};

/// Throws refusal where the id is taken or the branch is unknown.
void add_operator(connection& server, const operator_account& account);

/// Throws refusal where there is none of that id.
void remove_operator(connection& server, const QString& id);

} // namespace orvo::setup
