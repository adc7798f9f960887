#include "members/rules/member_copy.h"

#include "db/wide_statement.h"

#include <QByteArrayView>

#include <array>
#include <optional>
#include <stdexcept>

namespace orvo {

namespace {

constexpr std::array<std::string_view, 37> copied_columns{
    "pers_no",        "lic_no",         "pers_name",     "pers_sex",     "code_religion", "pers_marry",
    "code_post",      "pers_add",       "pers_tel",      "pers_hp",      "email",         "code_bran",
    "code_big",       "code_sect",      "code_scholar",  "code_univer",  "code_school",   "pers_career",
    "pers_call",      "get_mail_place", "pers_year_pay", "code_member",  "re_edu_flag",   "regi_date",
    "bran_calc_flag", "lic_kind1",      "lic_kind2",     "lic_kind3",    "lic_kind4",     "lic_kind5",
    "lic_kind6",      "lic_kind6_no",   "lic_kind7",     "lic_kind7_no", "lic_pay",       "code_deposit",
    "sub_code"};

constexpr std::string_view insert_text =
    "insert into person_m_tbl("
    "pers_no,lic_no,"
    "pers_name,pers_sex,"
    "code_religion,pers_marry,"
    "code_post,pers_add,"
    "pers_tel,pers_hp,email,"
    "code_bran,"
    "code_big,code_sect,"
    "code_scholar,code_univer,"
    "code_school,pers_career,"
    "pers_call,get_mail_place,"
    "pers_year_pay,code_member,re_edu_flag,"
    "regi_date,bran_calc_flag,"
    "lic_kind1,lic_kind2,lic_kind3,lic_kind4,lic_kind5,lic_kind6,lic_kind6_no,lic_kind7,lic_kind7_no,"
    "lic_pay,code_deposit,sub_code) values ("
    "'{pers_no}','{lic_no}',"
    "'{pers_name}','{pers_sex}',"
    "'{code_religion}','{pers_marry}',"
    "'{code_post}','{pers_add}',"
    "'{pers_tel}','{pers_hp}','{email}',"
    "'{code_bran}',"
    "'{code_big}','{code_sect}',"
    "'{code_scholar}','{code_univer}',"
    "'{code_school}','{pers_career}',"
    "'{pers_call}','{get_mail_place}',"
    "'{pers_year_pay}','{code_member}','{re_edu_flag}',"
    "'{regi_date}','{bran_calc_flag}',"
    "'{lic_kind1}','{lic_kind2}','{lic_kind3}','{lic_kind4}','{lic_kind5}','{lic_kind6}','{lic_kind6_no}',"
    "'{lic_kind7}','{lic_kind7_no}',"
    "'{lic_pay}','{code_deposit}','{sub_code}')";

/// Takes the members as they come from the server. All of it is one transaction of the local file.
class copy_sink : public row_sink {
public:
    copy_sink(connection& local, const std::function<void()>& found_some)
        : local_{local}, found_some_{found_some}, insert_{local.repeat(insert_text)}
    {
    }

    void begin(const column_names& names) override
    {
        all_or_nothing_.reset(); // the line was lost in between: what came is undone, and comes once more
        count_ = 0;
        for (std::size_t i = 0; i < copied_columns.size(); ++i)
            source_[i] = last_of(names, copied_columns[i]);
    }

    bool take(std::span<const cell> row) override
    {
        if (!all_or_nothing_)
            start();
        for (std::size_t i = 0; i < source_.size(); ++i)
            member_[i] = row[source_[i]].unpadded();
        insert_(member_);
        ++count_;
        return true;
    }

    qint64 finish()
    {
        if (all_or_nothing_)
            all_or_nothing_->commit();
        return count_;
    }

private:
    connection& local_;
    const std::function<void()>& found_some_;
    repeated_write insert_;
    std::optional<transaction> all_or_nothing_;
    std::array<std::size_t, copied_columns.size()> source_{};
    std::array<cell, copied_columns.size()> member_{};
    qint64 count_ = 0;

    void start()
    {
        found_some_();
        all_or_nothing_.emplace(local_);
        local_.write("delete from person_m_tbl");
    }

    static std::size_t last_of(const column_names& names, std::string_view wanted)
    {
        for (std::size_t i = names.size(); i-- > 0;)
            if (QByteArrayView{names[i]}.compare(QByteArrayView{wanted}, Qt::CaseInsensitive) == 0)
                return i;
        throw std::logic_error{"the query brings no column " + std::string{wanted}};
    }
};

} // namespace

void refresh_copy(connection& local, const rows::row& on_server)
{
    // An update, not a new row: the member keeps his place on his page.
    std::vector<column_value> columns;
    for (const std::string_view each : copied_columns)
        columns.push_back({each, on_server.text(each)});
    local.write(update_text("person_m_tbl", columns) + " where pers_no='{pers_no}'", slot_values(columns));
}

qint64 copy_members(connection& db, connection& local, const member_query& query, progress* follow,
                    const std::function<void()>& found_some)
{
    copy_sink sink{local, found_some};
    db.read_each(query.text, query.given, sink, follow);
    return sink.finish();
}

} // namespace orvo
