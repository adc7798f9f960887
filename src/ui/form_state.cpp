#include "ui/form_state.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>

namespace orvo {

namespace {

bool is_remembered(const QWidget& field)
{
    if (field.objectName().isEmpty() || field.objectName().startsWith(QLatin1String("qt_")))
        return false;
    if (const auto* box = dynamic_cast<const QAbstractButton*>(&field))
        return box->isCheckable();
    // The line inside a list that can be typed into belongs to the list.
    const bool is_text =
        dynamic_cast<const QLineEdit*>(&field) && !dynamic_cast<const QComboBox*>(field.parentWidget());
    return is_text || dynamic_cast<const QComboBox*>(&field);
}

QJsonValue value_of(const QWidget& field)
{
    if (const auto* box = dynamic_cast<const QAbstractButton*>(&field))
        return box->isChecked();
    if (const auto* text = dynamic_cast<const QLineEdit*>(&field))
        return text->text();
    const auto& list = static_cast<const QComboBox&>(field);
    return QJsonObject{{QStringLiteral("text"), list.currentText()},
                       {QStringLiteral("code"), list.currentData().toString()}};
}

/// Several entries can bear one code, so both are looked at.
int place_of(const QComboBox& list, const QJsonObject& entry)
{
    for (int i = 0; i < list.count(); ++i)
        if (list.itemText(i) == entry.value(QStringLiteral("text")).toString() &&
            list.itemData(i).toString() == entry.value(QStringLiteral("code")).toString())
            return i;
    return -1;
}

} // namespace

QJsonObject form_state(const QWidget& form, const QStringList& but_not)
{
    QJsonObject state;
    for (const QWidget* each : form.findChildren<QWidget*>())
        if (is_remembered(*each) && !but_not.contains(each->objectName()))
            state.insert(each->objectName(), value_of(*each));
    return state;
}

void restore_field(QWidget& form, const QJsonObject& state, const QString& name)
{
    const QJsonValue value = state.value(name);
    auto* field = form.findChild<QWidget*>(name);
    if (!field || value.isUndefined() || !is_remembered(*field))
        return;
    if (auto* box = dynamic_cast<QAbstractButton*>(field))
        box->setChecked(value.toBool());
    else if (auto* text = dynamic_cast<QLineEdit*>(field))
        text->setText(value.toString());
    else if (auto* list = dynamic_cast<QComboBox*>(field))
        list->setCurrentIndex(place_of(*list, value.toObject()));
}

void restore_form(QWidget& form, const QJsonObject& state)
{
    for (const QString& name : state.keys())
        restore_field(form, state, name);
}

void watch_form(QWidget& form, QObject* as_long_as, const std::function<void()>& changed)
{
    for (QWidget* each : form.findChildren<QWidget*>()) {
        if (!is_remembered(*each))
            continue;
        if (auto* box = dynamic_cast<QAbstractButton*>(each))
            QObject::connect(box, &QAbstractButton::toggled, as_long_as, changed);
        else if (auto* text = dynamic_cast<QLineEdit*>(each))
            QObject::connect(text, &QLineEdit::textChanged, as_long_as, changed);
        else if (auto* list = dynamic_cast<QComboBox*>(each))
            QObject::connect(list, &QComboBox::currentIndexChanged, as_long_as, changed);
    }
}

} // namespace orvo
