#pragma once

#include "db/connection.h"

#include <QDateTime>
#include <QString>

#include <vector>

namespace orvo {

/// What an operator searched for and opened last on this workstation, newest first. Kept in the local file,
/// which only its owner can read: a search word may be a resident number.
struct recent_member {
    QString pers_no;
    QString pers_name;
};

void remember_word(connection& local, const QString& operator_id, int item, const QString& word,
                   const QDateTime& now);
QStringList recent_words(connection& local, const QString& operator_id, int item);

void remember_member(connection& local, const QString& operator_id, const recent_member& member,
                     const QDateTime& now);
std::vector<recent_member> recent_members(connection& local, const QString& operator_id);

} // namespace orvo
