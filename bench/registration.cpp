#include "form_openings.h"
#include "registration_floor.h"

#include "client/client.h"
#include "members/rules/registration.h"
#include "ui/theme.h"

#include <QCommandLineParser>

#include <chrono>
#include <cstdio>
#include <cstdlib>

using namespace orvo::bench;

namespace {

/// Numbers all over the register, as those of new members are; the 9 behind the date of birth is nobody
/// else's.
QString number_of_member(int i)
{
    const int birth = i * 7919 % (49 * 12 * 28);
    return QString::asprintf("%02d%02d%02d9%06d", 50 + birth / 28 / 12, 1 + birth / 28 % 12, 1 + birth % 28,
                             i);
}

/// All that a form can hold: the dates of a payment, a pledge and a workplace. The floor stores the same.
orvo::new_member filled_form()
{
    const auto text = [](const char* utf8) { return QString::fromUtf8(utf8); };
    orvo::new_member typed;
    orvo::member_data& m = typed.member;
    m.lic_no = text("12345");
    m.pers_name = text("홍길순");
    m.code_religion = text("2");
    m.pers_marry = text("미혼");
    m.code_post = text("135080");
    m.pers_add = text("서울 강남구 역삼동 12-3");
    m.pers_tel = {text("02"), text("2123"), text("4567")};
    m.pers_hp = {text("010"), text("1234"), text("5678")};
    m.email = text("hong@example.org");
    m.code_bran = text("1");
    m.code_big = text("2");
    m.code_sect = text("3");
    m.code_scholar = text("1");
    m.code_univer = text("1");
    m.code_school = text("7");
    m.career_years = text("05");
    m.career_months = text("06");
    m.pers_call = text("영양사님");
    m.get_mail_place = text("자택");
    m.pers_year_pay = text("2400");
    m.lic_kind = {true, false, false, true, false, true, false};
    m.lic_kind6_no = text("제6-77호");
    m.lic_pay = text("50000");
    m.code_deposit = text("4");
    m.sub_code = text("5");
    typed.code_member = text("1");
    typed.mem_dues = text("30000");
    typed.agree_pay = text("20000");
    typed.dues_in = text("500000");
    typed.pers_mem_day = text("20260102");
    typed.pers_mem_b_day = text("20260102");
    typed.code_receipt = text("3");
    orvo::workplace_data& w = typed.workplace;
    w.company_name = text("한빛병원");
    w.code_part = text("100");
    w.code_great = text("1");
    w.code_small = text("2");
    w.pers_in_date = text("202503");
    w.job_dept = text("영양과");
    w.job_line_code = text("1");
    w.job_level_code = text("2");
    w.code_use = text("1");
    w.code_post = text("135081");
    w.company_add = text("서울 강남구 역삼동 45");
    w.company_tel = text("0225556666");
    w.company_fax = text("0225556667");
    w.meals = {text("100"), text("300"), text("200"), text("0")};
    w.staff = {text("2"), text("3"), text("8")};
    w.company_meal = text("3500");
    w.company_sick_bad = text("120");
    w.pers_multy = text("0");
    w.join_con = text("2");
    w.comp_except = text("1");
    w.primary_flag = text("1");
    return typed;
}

void register_member(orvo::connection& db, const orvo::new_member& typed)
{
    const QString today = QStringLiteral("20260102");
    if (is_registered(db, typed.member.pers_no()))
        qFatal("bench_registration: the number is taken");
    orvo::save_steps save{db};
    store_member(save, typed, today);
    store_pledge(save, typed, today);
    store_workplace(save, typed, today);
}

template <typename work>
double milliseconds_of(work run)
{
    const auto started = std::chrono::steady_clock::now();
    run();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - started).count();
}

/// The first rounds warm both.
void register_by_turns(orvo::connection& db, const QByteArray& floor_server, int times,
                       const std::function<void(const char* who, double took)>& add)
{
    constexpr int warming = 5;
    registration_floor* floor = open_registration_floor(floor_server);
    orvo::new_member typed = filled_form();
    for (int i = 0; i < warming + times; ++i) {
        const QString pers_no = number_of_member(i);
        typed.member.pers_no1 = pers_no.left(6);
        typed.member.pers_no2 = pers_no.mid(6);
        const QByteArray number = pers_no.toLatin1();
        double took[2];
        for (const bool is_floor : {i % 2 == 0, i % 2 != 0})
            took[is_floor] = milliseconds_of(
                [&] { is_floor ? register_on_floor(floor, number) : register_member(db, typed); });
        if (i < warming)
            continue;
        add("client", took[false]);
        add("floor", took[true]);
    }
    close_registration_floor(floor);
}

/// Whether both left the same rows: five for each registration.
bool are_same_registrations(const QByteArray& one, const QByteArray& other, int expected)
{
    const auto rows = stored_registrations(one);
    const auto others = stored_registrations(other);
    if (rows.size() != static_cast<std::size_t>(expected) || others.size() != rows.size()) {
        std::fprintf(stderr, "bench_registration: %zu and %zu rows instead of %d\n", rows.size(),
                     others.size(), expected);
        return false;
    }
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (rows[i] != others[i]) {
            std::fprintf(stderr, "bench_registration: the rows differ\n%s\n%s\n", rows[i].c_str(),
                         others[i].c_str());
            return false;
        }
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    watched_application app{argc, argv};
    QApplication::setApplicationName(QStringLiteral("orvo"));
    QCommandLineParser line;
    const auto option = [&line](const char* name, const char* what) {
        line.addOption({QString::fromLatin1(name), QString::fromLatin1(what), QString::fromLatin1(name)});
    };
    option("engine", "What the samples are to say of the engine.");
    option("members", "... and of the number of members.");
    option("server", "The client's register: a file, or postgresql:<connection text>.");
    option("floor-server", "Another register of the same content, for the floor.");
    option("openings", "How often to open the form.");
    option("registrations", "How many members to register.");
    line.process(app);
    const auto number = [&line](const char* name) { return line.value(QString::fromLatin1(name)).toInt(); };
    const auto server = [&line](const char* name) { return line.value(QString::fromLatin1(name)).toUtf8(); };
    const QByteArray engine = server("engine");
    const auto adding = [&](const char* what) {
        return [&, what](const char* who, double took) {
            std::printf("%s %d %s %s 0 %.3f\n", engine.constData(), number("members"), what, who, took);
        };
    };

    orvo::apply_theme(app, orvo::preferred_shade());
    driven_program client{app};
    client.start();
    open_forms(client, app, number("openings"), adding("form"));
    const int registrations = number("registrations");
    register_by_turns(client.running().running_client().db_conn, server("floor-server"), registrations,
                      adding("registration"));
    std::fflush(stdout);
    return are_same_registrations(server("server"), server("floor-server"), (registrations + 5) * 5) ? 0 : 1;
}
