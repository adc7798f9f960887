#pragma once

#include "db/connection.h"

#include <QDateTime>
#include <QJsonObject>

#include <optional>

namespace orvo {

/// What an operator had typed into a form and not yet saved. One draft a form and operator, in the local
/// file, which only its owner can read.
struct draft {
    QJsonObject fields; ///< by the name of the control
    QDateTime kept_at;
};

void keep_draft(connection& local, const QString& operator_id, const QString& form, const draft& typed);
std::optional<draft> kept_draft(connection& local, const QString& operator_id, const QString& form);
void forget_draft(connection& local, const QString& operator_id, const QString& form);

} // namespace orvo
