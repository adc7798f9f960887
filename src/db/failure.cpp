#include "db/failure.h"

namespace orvo {

db_failure::db_failure(failure_kind kind, QString text, QString statement, QString code)
    : kind_{kind}, text_{std::move(text)},
      statement_{std::move(statement)}, code_{std::move(code)}, bytes_{text_.toUtf8()}
{
}

QString db_failure::details() const
{
    QStringList lines{text_};
    if (!code_.isEmpty())
        lines.append(QStringLiteral("[%1]").arg(code_));
    if (!statement_.isEmpty())
        lines.append(statement_);
    return lines.join(u'\n');
}

db_failure db_failure::at(QString place) const
{
    db_failure told{*this};
    told.place_ = std::move(place);
    return told;
}

db_failure db_failure::behind(QStringList stored, QString missing) const
{
    db_failure told{*this};
    told.stored_ = std::move(stored);
    told.missing_ = std::move(missing);
    return told;
}

db_failure db_failure::within(QString how_far) const
{
    db_failure told{*this};
    told.how_far_ = std::move(how_far);
    return told;
}

db_failure db_failure::in_doubt() const
{
    db_failure told{*this};
    told.kind_ = failure_kind::outcome_unknown;
    return told;
}

std::int32_t db_failure::number() const
{
    switch (kind_) {
    case failure_kind::line_lost:
        return error_number::unreachable;
    case failure_kind::login_refused:
        return error_number::login_refused;
    case failure_kind::overflow:
        return error_number::overflow;
    case failure_kind::duplicate:
        return static_cast<std::int32_t>(0x80040E2F);
    case failure_kind::conversion:
        return static_cast<std::int32_t>(0x80040E07);
    case failure_kind::cancelled:
        return static_cast<std::int32_t>(0x80040E4E);
    case failure_kind::timed_out:
        return static_cast<std::int32_t>(0x80040E31);
    case failure_kind::disk_full:
        return static_cast<std::int32_t>(0x80030070);
    case failure_kind::outcome_unknown:
    case failure_kind::damaged:
    case failure_kind::other:
        break;
    }
    return static_cast<std::int32_t>(0x80040E14);
}

} // namespace orvo
