#pragma once

#include "db/question.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace orvo {

/// A member's row of the last search's copy; nothing where it is gone.
std::optional<rows> read_member(connection& local, const QString& pers_no);

struct web_identity {
    QString id;
    QString passwd;
};

/// Whether no member logs in under that name yet.
bool is_id_free(connection& db, const QString& id);

/// A line of a panel: what is shown, and the key by which dialogs find the record.
struct panel_row {
    QStringList cells;
    QString key;
};

/// Dues years: year, kind, dues, outstanding; the key is the kind's code. A year of a kind that no longer
/// exists is not shown.
std::vector<panel_row> dues_years(connection& db, const QString& pers_no);

/// Whether the member has dues of that year, of whatever kind.
bool has_header_of_year(connection& db, const QString& pers_no, const QString& year);

/// A year of dues as the panel shows it.
struct shown_year {
    QString val_year;
    qint64 yet_money = 0;
};
/// The place of the year for which a payment comes in, as long as nobody says otherwise: the oldest with
/// something open, or else the newest. What is no year ("평생회원") comes behind all years.
std::optional<std::size_t> year_to_pay(const std::vector<shown_year>& years);

/// Payments entered under a year's text: paid to head office, paid to the branch, amount; the key is
/// `dues_id`.
std::vector<panel_row> dues_lines(connection& db, const QString& pers_no, const QString& val_year);

/// Workplaces, the primary one first: name, class, leaving date, hygiene education; the key is `company_id`.
std::vector<panel_row> workplaces(connection& db, const QString& pers_no);

struct pledge {
    QString con_day;                    ///< "yyyymmdd"; empty without a pledge
    QString text;                       ///< lines ending in CR LF; empty without a pledge
    std::vector<panel_row> instalments; ///< date, amount; the key is `con_id`
};

pledge read_pledge(connection& db, const QString& pers_no);

/// Nothing where he has none.
question<std::optional<web_identity>> web_identity_of(const QString& pers_no);

/// What the console shows of a member who is opened, beside his row.
struct member_records {
    web_identity login;
    pledge pledged;
    std::vector<panel_row> years;
    std::vector<panel_row> places;
};
/// A member who has no web login gets an empty one at once, so that whoever was opened here once has a row to
/// be changed.
member_records open_records(connection& db, const QString& pers_no);

} // namespace orvo
