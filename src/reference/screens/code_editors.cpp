#include "reference/screens/code_editors.h"

#include "db/schema/schema.h"
#include "reference/rules/divisions.h"
#include "ui/controls.h"

namespace orvo {

namespace {

/// A contractor has an address and a telephone. The fields of the number hold one character more than its
/// column, so that a number that is too long is refused and not cut.
code_extras contractor_extras(client&)
{
    auto* add_txt = text_field(QStringLiteral("add_txt"), 44, width_of("deposit", "deposit_add") + 1);
    std::vector<QLineEdit*> tel;
    for (const char* name : {"tel1_txt", "tel2_txt", "tel3_txt"})
        tel.push_back(text_field(QString::fromLatin1(name), 6, width_of("deposit", "deposit_tel") / 3 + 1));
    code_extras more;
    more.texts = {{"deposit_add", "add_txt", {add_txt}, {QStringLiteral("주소"), 147, false, true}},
                  {"deposit_tel", "tel", tel, {QStringLiteral("전화번호"), 100}}};
    more.below = {{QStringLiteral("주소"), {add_txt}, false, true},
                  {QStringLiteral("전화"), {tel[0], "-", tel[1], "-", tel[2]}}};
    more.name = {QStringLiteral("이름"), 180};
    more.grid_width = 640;
    return more;
}

code_list* part_list()
{
    auto* part_cbb = new code_list{QStringLiteral("part_cbb"), 14};
    part_cbb->add(QStringLiteral("집단급식소"), 100);
    part_cbb->add(QStringLiteral("비집단급식소"), 200);
    part_cbb->setCurrentIndex(-1);
    return part_cbb;
}

code_extras great_division_extras(client&)
{
    code_extras more;
    auto* part_cbb = part_list();
    more.parents = {{"code_part", part_cbb}};
    more.above = {{QStringLiteral("구분(&P)"), {part_cbb}}};
    return more;
}

code_extras small_division_extras(client& c)
{
    code_extras more;
    auto* part_cbb = part_list();
    auto* great_div_cbb = new code_list{QStringLiteral("great_div_cbb"), 20};
    QObject::connect(part_cbb, &QComboBox::currentIndexChanged, great_div_cbb, [&c, part_cbb, great_div_cbb] {
        failures::guard(c.say, failures::policy::report, [&] {
            great_div_cbb->fill(read_great_divisions(c.local_conn, part_cbb->code()), "great_name",
                                "code_great");
        });
    });
    more.parents = {{"code_part", part_cbb}, {"code_great", great_div_cbb}};
    more.above = {{QStringLiteral("구분(&P)"), {part_cbb}}, {QStringLiteral("대분류(&G)"), {great_div_cbb}}};
    return more;
}

code_extras section_extras(client& c)
{
    code_extras more;
    auto* bran_cbb = new code_list{QStringLiteral("bran_cbb"), 20};
    auto* big_cbb = new code_list{QStringLiteral("big_cbb"), 20};
    failures::guard(c.say, failures::policy::report, [&] {
        bran_cbb->fill(read_branches(c.local_conn), "branch_name", "code_bran");
        big_cbb->fill(read_big_divisions(c.local_conn), "big_name", "code_big");
    });
    more.parents = {{"code_bran", bran_cbb}, {"code_big", big_cbb}};
    more.above = {{QStringLiteral("소속지부(&B)"), {bran_cbb}}, {QStringLiteral("소속분과(&D)"), {big_cbb}}};
    return more;
}

} // namespace

std::unique_ptr<code_editor_dlg> make_code_editor(const code_editor& of, client& c, desk& at, QWidget* over)
{
    static const std::map<std::string_view, code_extras (*)(client&)> with_extras{
        {"deposit_dlg", contractor_extras},
        {"great_dlg", great_division_extras},
        {"small_dlg", small_division_extras},
        {"section_dlg", section_extras},
    };
    const auto own = with_extras.find(of.dialog);
    return std::make_unique<code_editor_dlg>(c, at, of, over,
                                             own == with_extras.end() ? code_extras{} : own->second(c));
}

} // namespace orvo
