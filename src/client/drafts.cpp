#include "client/drafts.h"

#include <QJsonDocument>

namespace orvo {

void keep_draft(connection& local, const QString& operator_id, const QString& form, const draft& typed)
{
    const values given{
        {"admin_id", operator_id},
        {"form", form},
        {"fields", QString::fromUtf8(QJsonDocument{typed.fields}.toJson(QJsonDocument::Compact))},
        {"kept_at", typed.kept_at.toString(Qt::ISODate)}};
    transaction both{local};
    forget_draft(local, operator_id, form);
    local.write("insert into drafts(admin_id,form,fields,kept_at) values "
                "('{admin_id}','{form}','{fields}','{kept_at}')",
                given);
    both.commit();
}

std::optional<draft> kept_draft(connection& local, const QString& operator_id, const QString& form)
{
    const rows found = local.read("select * from drafts where admin_id='{admin_id}' and form='{form}'",
                                  {{"admin_id", operator_id}, {"form", form}});
    if (found.empty())
        return {};
    const auto row = found.front();
    return draft{QJsonDocument::fromJson(row.text("fields").toUtf8()).object(),
                 QDateTime::fromString(row.text("kept_at"), Qt::ISODate)};
}

void forget_draft(connection& local, const QString& operator_id, const QString& form)
{
    local.write("delete from drafts where admin_id='{admin_id}' and form='{form}'",
                {{"admin_id", operator_id}, {"form", form}});
}

} // namespace orvo
