#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <functional>

class QWidget;

namespace orvo {

/// What stands in the fields, lists and boxes of a form that bear names, by those names.
QJsonObject form_state(const QWidget& form, const QStringList& but_not);

/// Puts back what a field held. Of a list the entry of that code and text; none where the list has no such
/// entry any more. Nobody is told of it as of a pick.
void restore_field(QWidget& form, const QJsonObject& state, const QString& name);
void restore_form(QWidget& form, const QJsonObject& state);

/// Calls `changed` whenever something in the form changes.
void watch_form(QWidget& form, QObject* as_long_as, const std::function<void()>& changed);

} // namespace orvo
