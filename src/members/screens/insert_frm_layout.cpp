#include "members/screens/insert_frm.h"
#include "members/screens/lookalike_list.h"
#include "ui/amount_field.h"
#include "ui/controls.h"
#include "ui/enter_walk.h"
#include "ui/form.h"

#include <QApplication>
#include <QBoxLayout>
#include <QCheckBox>
#include <QLabel>
#include <QRadioButton>
#include <QScrollArea>

namespace orvo {

namespace {

constexpr bool optional = false;
constexpr bool required = true;
constexpr bool fills = true;

const QString widest_caption = QStringLiteral("자택전화번호 *");

entry row(const char* caption, std::vector<entry::piece> pieces, bool is_required = optional,
          bool takes_rest = false)
{
    return {QString::fromUtf8(caption), std::move(pieces), is_required, takes_rest};
}

/// Without a frame, and without a bar as long as the screen is large enough. What has the focus is in sight.
QWidget* in_scroll_area(QLayout* content)
{
    auto* area = new QScrollArea;
    auto* inside = new QWidget;
    inside->setLayout(content);
    content->setContentsMargins(0, 0, 0, 0);
    area->setWidget(inside);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    QObject::connect(qApp, &QApplication::focusChanged, area, [area, inside](QWidget*, QWidget* now) {
        if (now && inside->isAncestorOf(now))
            area->ensureWidgetVisible(now);
    });
    return area;
}

} // namespace

QLayout* insert_frm::required_rows()
{
    const member_fields& m = member_;
    return form({row("이름", {m.name_txt}, required, fills), row("성별", {m.sex1_opt, m.sex2_opt}),
                 row("주민등록번호", {m.pers_no1_txt, "-", m.pers_no2_txt}, required),
                 row("회원구분", {mem_kind_cbb}, required, fills),
                 row("소속지부", {m.bran_cbb, m.bran_img}, required, fills),
                 row("소속분과", {m.big_cbb, m.big_img}, required, fills),
                 row("소속분회", {m.sect_cbb, m.sect_img}, required, fills),
                 row("자택주소", {m.post1_txt, "-", m.post2_txt, m.addr_img}),
                 row("", {m.addr_txt}, optional, fills),
                 row("자택전화번호", {m.tel[0], "-", m.tel[1], "-", m.tel[2]}, required)},
                widest_caption);
}

QLayout* insert_frm::payment_rows()
{
    const payment_fields& p = payment_;
    const date_group& head = p.big_in;
    const date_group& branch = p.bran_in;
    return form({row("총회비", {p.mem_dues_txt, "원"}), row("회비입금액", {p.agree_pay_txt, "원"}),
                 row("약정금액", {p.dues_in_txt, "원"}),
                 row("본회입금일자", {head.year, "년", head.month, "월", head.day, "일"}),
                 row("지회입금일자", {branch.year, "년", branch.month, "월", branch.day, "일"}),
                 row("", {p.line}, optional, fills),
                 row("회비입금장소", {p.receipt_cbb, p.receipt_img}, optional, fills),
                 row("회비납입완료", {p.incom_cbb}, optional, fills)},
                widest_caption);
}

QLayout* insert_frm::personal_rows()
{
    const member_fields& m = member_;
    const auto& chk = m.lic_kind_chk;
    return form({row("핸드폰번호", {m.hp[0], "-", m.hp[1], "-", m.hp[2]}),
                 row("E-Mail", {m.email_txt}, optional, fills),
                 row("자격증소지현황1", {chk[0], chk[1], chk[2], chk[3], chk[4]}),
                 row("자격증소지현황2", {chk[5], m.lic_kind6_no}, optional, fills),
                 row("", {chk[6], m.lic_kind7_no}, optional, fills),
                 row("혼인여부", {m.marry_cbb}, optional, fills),
                 row("종교", {m.rel_cbb, m.rel_img}, optional, fills),
                 row("발송호칭", {m.pers_call_cbb}, optional, fills),
                 row("우편물수신처", {m.get_mail_cbb}, optional, fills),
                 row("면허번호", {m.lic_no_txt}, optional, fills),
                 row("최종학력", {m.scholar_cbb, "학위", m.univer_cbb}, optional, fills),
                 row("학교", {m.school_cbb, m.school_img}, optional, fills),
                 row("경력", {m.career_y_cbb, "년", m.career_m_cbb, "개월"}),
                 row("소속위탁업체", {m.deposit_cbb, m.deposit_img}, optional, fills),
                 row("영양사면허수당", {m.lic_pay_txt, "원"}), row("연봉", {m.year_pay_txt, "만원"}),
                 row("산하단체.분야회 소속현황", {m.sub_cbb, m.sub_img}, optional, fills),
                 row("아이디", {m.id_txt, "비밀번호", m.passwd_txt}, optional, fills)});
}

QLayout* insert_frm::workplace_rows()
{
    const workplace_fields& w = workplace_;
    return form({row("근무처명", {w.com_name_txt}, optional, fills),
                 row("근무처구분", {w.part_cbb}, optional, fills),
                 row("근무처대분류", {w.great_div_cbb, w.great_img}, optional, fills),
                 row("근무처소분류", {w.small_div_cbb, w.small_img}, optional, fills),
                 row("입사일", {w.emp.year, "년", w.emp.month, "월"}),
                 row("부서 및 직급", {w.job_part_txt}, optional, fills),
                 row("직렬", {w.job_line_cbb, w.job_line_img}, optional, fills),
                 row("직급", {w.job_level_cbb, w.job_level_img}, optional, fills),
                 row("운영형태", {w.use_cbb}, optional, fills),
                 row("허가병상", {w.sick_txt}),
                 row("회사주소", {w.com_post1_txt, "-", w.com_post2_txt, w.com_img}),
                 row("", {w.com_addr_txt}, optional, fills),
                 row("전화번호", {w.com_tel[0], "-", w.com_tel[1], "-", w.com_tel[2]}),
                 row("팩스번호", {w.fax[0], "-", w.fax[1], "-", w.fax[2]}),
                 row("1식재료비", {w.meal_s_txt, "원"}),
                 row("1일급식인원", {"아침", w.np[0], "점심", w.np[1], "저녁", w.np[2], "야식", w.np[3]}),
                 row("급식종사자수", {"영양사", w.mnp[0], "조리사", w.mnp[1], "조리원", w.mnp[2]}),
                 row("겸직여부", {w.pers_multy_cbb}),
                 row("공동관리", {w.join_con_cbb, "공동조리", w.join_cook_cbb}),
                 row("위생교육여부", {w.san_edu_cbb, "우선 근무처여부", w.primary_cbb})});
}

void insert_frm::arrange()
{
    auto* required_block =
        group(QStringLiteral("required_group"), QStringLiteral("필수사항"), required_rows());
    auto* payment_block =
        group(QStringLiteral("payment_group"), QStringLiteral("약정 및 회비납입"), payment_rows());
    auto* personal_block = group(QStringLiteral("personal_group"), QString{}, personal_rows());
    auto* workplace_block =
        group(QStringLiteral("workplace_group"), QStringLiteral("근무처(1)"), workplace_rows());
    QWidget* alike = new lookalike_list{c_, member_};
    alike->setFixedHeight(fontMetrics().lineSpacing() * 3 + 4);

    auto* head = new QHBoxLayout;
    head->setSpacing(rhythm);
    head->addWidget(heading(QStringLiteral("회원관리")));
    head->addSpacing(rhythm * 2);
    head->addWidget(alike, 1);
    for (QPushButton* each : {search_im, insert_img, mem_in_img})
        head->addWidget(each);
    auto* columns = beside(
        {below({required_block, payment_block}, 1), below({personal_block}, 0), below({workplace_block}, 0)},
        {4, 5, 5});
    auto* all = new QVBoxLayout{this};
    all->setContentsMargins(rhythm * 2, rhythm, rhythm * 2, rhythm);
    all->addLayout(head);
    all->addWidget(in_scroll_area(columns), 1);

    auto* walk = new enter_walk{*this};
    chain_fields(*walk);
    walk->begin();
    // They stand at the top, and come behind the fields all the same.
    setTabOrder(workplace_.primary_cbb, mem_in_img);
    setTabOrder(mem_in_img, insert_img);
    setTabOrder(insert_img, search_im);
}

void insert_frm::chain_fields(enter_walk& walk)
{
    const member_fields& m = member_;
    const workplace_fields& w = workplace_;
    const auto& chk = m.lic_kind_chk;
    walk.chain({m.name_txt, m.sex2_opt, m.pers_no1_txt});
    walk.chain({m.sex1_opt, m.pers_no1_txt});
    walk.chain({m.addr_txt, m.tel[0], m.tel[1], m.tel[2], m.hp[0], m.hp[1], m.hp[2], m.email_txt, chk[0],
                chk[1], chk[2], chk[3], chk[4], chk[5], m.lic_kind6_no, chk[6], m.lic_kind7_no, m.marry_cbb});
    walk.chain({m.lic_no_txt, m.scholar_cbb});
    walk.chain({m.lic_pay_txt, m.year_pay_txt, m.sub_cbb});
    walk.chain({payment_.agree_pay_txt, payment_.dues_in_txt, payment_.big_in.year});
    walk.chain({w.com_name_txt, w.part_cbb});
    walk.chain({w.sick_txt, w.com_post1_txt});
    walk.chain({w.com_addr_txt, w.com_tel[0], w.com_tel[1], w.com_tel[2], w.fax[0], w.fax[1], w.fax[2],
                w.meal_s_txt, w.np[0], w.np[1], w.np[2], w.np[3], w.mnp[0], w.mnp[1], w.mnp[2],
                w.pers_multy_cbb});
    walk.chain({w.job_part_txt, w.job_line_cbb});
    walk.chain({w.primary_cbb, mem_in_img});
    walk.leave_alone(m.id_txt);
}

} // namespace orvo
