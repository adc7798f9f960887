#include "reference/screens/code_editor_dlg.h"

#include "client/code_mirror.h"
#include "db/schema/schema.h"
#include "ui/controls.h"
#include "ui/enter_walk.h"
#include "ui/pick_target.h"

namespace orvo {

namespace {

message refusal(const char* text)
{
    return {QString::fromUtf8(text), {}, sign::exclamation};
}

const message nothing_found{QStringLiteral("검색한 내용이 없습니다."), {}, sign::information};

const char* const head_office_alone = "코드는 본회에서만 추가할 수 있습니다.";

const QString synced = QStringLiteral("코드표를 서버와 맞추었습니다.\n"
                                      "목록을 확인하고, 찾는 항목이 없으면 다시 추가하십시오.");

/// Where a new code is by now, and why not on both sides.
QString state_of(const addition& made)
{
    const failure_kind why = made.failure->kind();
    QString where = QStringLiteral("코드 %1을(를) 저장하지 못했습니다.");
    if (made.is_here && why == failure_kind::outcome_unknown)
        where = QStringLiteral("코드 %1을(를) 이 컴퓨터에 저장하였으나, 서버에 저장되었는지 알 수 없습니다.");
    else if (made.is_here)
        where = QStringLiteral("코드 %1을(를) 이 컴퓨터에만 저장하고, 서버에는 저장하지 못했습니다.");
    else if (made.is_on_server)
        where = QStringLiteral("코드 %1을(를) 서버에만 저장하고, 이 컴퓨터에는 저장하지 못했습니다.");
    QString reason = failures::in_words(*made.failure);
    if (why == failure_kind::duplicate)
        reason = QStringLiteral("다른 컴퓨터에서 같은 코드를 먼저 추가하였습니다.");
    else if (why == failure_kind::outcome_unknown)
        reason = QStringLiteral("서버의 응답을 받지 못했습니다.");
    else if (why == failure_kind::line_lost)
        reason = QStringLiteral("서버와의 연결이 끊어졌습니다.");
    return where.arg(made.code) + u'\n' + reason;
}

} // namespace

code_editor_dlg::code_editor_dlg(client& c, desk& at, const code_editor& of, QWidget* over,
                                 const code_extras& more)
    : dialog{QString::fromLatin1(of.dialog), c, over}, desk_{at}, of_{of}, parents_{more.parents},
      // One more than the column holds: what is pasted too long is refused, and not cut in silence.
      str_txt{text_field(QStringLiteral("str_txt"), 26, width_of(of.table, of.name) + 1)},
      search_img{primary_button(QString::fromLatin1(of.search_button), QStringLiteral("검색(&S)"), "search")},
      insert_img{button(QStringLiteral("insert_img"), QStringLiteral("추가(&A)"), "plus")},
      close_img{button(QStringLiteral("close_img"), QStringLiteral("닫기(&C)"), "x")}
{
    texts_.push_back({of.name, "str_txt", {str_txt}, more.name});
    texts_.insert(texts_.end(), more.texts.begin(), more.texts.end());
    bran_grd = make_grid();
    arrange(more);
    if (c.is_branch_operator()) {
        insert_img->setEnabled(false);
        insert_img->setToolTip(QString::fromUtf8(head_office_alone));
    }
    on_enter(str_txt, [this] { search(); });
    lead_by_enter();
    on_click(search_img, [this] { search(); });
    on_click(insert_img, [this] { add(); });
    on_click(close_img, [this] { close_with_hits(); });
    if (of.gives != hand_back::nothing)
        bran_grd->on_pick(
            [this](int row) { failures::guard(c_.say, failures::policy::report, [&] { pick(row); }); });
    keep_enter(bran_grd);
    bran_grd->follow(str_txt);
    str_txt->setFocus();
}

grid* code_editor_dlg::make_grid()
{
    std::vector<grid_column> columns{{QStringLiteral("코드"), 67, true}};
    for (const code_extras::text& each : texts_)
        columns.push_back(each.shown);
    auto* made = new grid{QStringLiteral("bran_grd"), columns, c_};
    made->setAccessibleName(QString::fromUtf8(of_.heading));
    made->set_empty_text(c_.is_branch_operator() ? QStringLiteral("찾을 이름을 입력하고 검색을 누르십시오.")
                                                 : QStringLiteral("찾을 이름을 입력하고 검색을 누르거나,\n"
                                                                  "새 이름을 입력하고 추가를 누르십시오."));
    return made;
}

void code_editor_dlg::arrange(const code_extras& more)
{
    std::vector<entry> fields = more.above;
    fields.push_back({QStringLiteral("이름(&N)"), {str_txt, search_img}});
    fields.insert(fields.end(), more.below.begin(), more.below.end());
    bran_grd->setMinimumSize(more.grid_width, 300);
    lay_out(below({heading(QString::fromUtf8(of_.heading)), form(fields), bran_grd,
                   line({insert_img, static_cast<QWidget*>(nullptr), close_img})},
                  2));
}

/// From each field behind the name to the next one, and at last to the button that adds.
void code_editor_dlg::lead_by_enter()
{
    std::vector<QLineEdit*> fields;
    for (const code_extras::text& each : texts_)
        fields.insert(fields.end(), each.fields.begin(), each.fields.end());
    for (std::size_t at = 1; at < fields.size(); ++at) {
        QWidget* next = at + 1 < fields.size() ? static_cast<QWidget*>(fields[at + 1]) : insert_img;
        on_enter(fields[at], [next] { next->setFocus(); });
    }
    auto* walk = new enter_walk{*this}; // through the lists above the name
    for (QLineEdit* each : fields)
        walk->leave_alone(each);
    walk->begin();
}

void code_editor_dlg::show_rows(const rows& found)
{
    std::vector<grid_row> shown;
    for (const auto row : found) {
        QStringList cells{row.text(of_.key)};
        for (const code_extras::text& each : texts_)
            cells.append(row.text(each.column));
        shown.push_back({cells, row.number(of_.key)});
    }
    bran_grd->fill(std::move(shown));
}

void code_editor_dlg::search()
{
    bran_grd->clear_rows();
    if (str_txt->text().isEmpty())
        return refuse(refusal("검색할 단어를 입력하여 주십시요"), str_txt);
    show_rows(find_codes(c_.local_conn, of_, str_txt->text()));
    if (bran_grd->filled_rows() == 0)
        refuse(nothing_found, str_txt);
}

values code_editor_dlg::parents() const
{
    values chosen;
    for (const code_extras::parent_list& each : parents_)
        chosen.add({each.column, each.list->code()});
    return chosen;
}

void code_editor_dlg::add()
{
    if (c_.is_branch_operator())
        return refuse(refusal(head_office_alone), str_txt);
    if (str_txt->text().isEmpty())
        return refuse(refusal("항목을 입력하여 주세요"), str_txt);
    for (const code_extras::parent_list& each : parents_)
        if (each.list->currentIndex() < 0)
            return refuse(refusal("지부와 분과를 선택해야 입력이 가능합니다."), each.list);
    if (c_.mirrors_behind.contains(of_.table))
        return bring_mirror_up_to_date();
    bran_grd->clear_rows();
    std::vector<column_text> entered;
    for (const code_extras::text& each : texts_) {
        entered.push_back({each.column, each.slot, {}});
        for (const QLineEdit* field : each.fields)
            entered.back().text += field->text();
    }
    const addition made = add_code(c_.local_conn, c_.db_conn, of_, entered, parents());
    if (!made.refusal.isEmpty())
        return refuse({made.refusal, {}, sign::exclamation}, texts_[made.refused_text].fields.front());
    if (made.failure)
        return tell_half_stored(made);
    show_rows(all_codes(c_.local_conn, of_, parents()));
    if (bran_grd->filled_rows() == 0)
        return refuse(nothing_found, str_txt);
    show_row_of(made.code, str_txt->text());
    for (const code_extras::text& each : texts_)
        for (QLineEdit* field : each.fields)
            field->clear();
    c_.say.tell({QStringLiteral("입력되었습니다."), {}, sign::information});
    str_txt->setFocus();
}

/// Codes of several parents stand together, so that the code alone does not tell the row.
void code_editor_dlg::show_row_of(qint64 code, const QString& name)
{
    for (int row = 0; row < bran_grd->filled_rows(); ++row)
        if (bran_grd->key(row).toLongLong() == code && bran_grd->cell(row, 1) == name)
            bran_grd->selectRow(row);
}

/// Nothing takes a row back that one side has already: the operator is told where it is, and led on. As long
/// as the sides are apart, a press on the adding button mends that first, so that no second row comes of it.
void code_editor_dlg::tell_half_stored(const addition& made)
{
    c_.mirrors_behind.insert(of_.table);
    message what{state_of(made) + QStringLiteral("\n\n코드표를 서버와 맞춘 뒤에 다시 추가하십시오."),
                 QString::fromUtf8(of_.heading), sign::exclamation};
    what.details = made.failure->details();
    if (c_.say.ask(what, QStringLiteral("지금 맞추기"), QStringLiteral("나중에")))
        bring_mirror_up_to_date();
}

void code_editor_dlg::bring_mirror_up_to_date()
{
    sync_code_table(c_.db_conn, c_.local_conn, of_.table);
    c_.mirrors_behind.erase(of_.table);
    show_rows(all_codes(c_.local_conn, of_, parents()));
    c_.say.tell({synced, {}, sign::information});
    str_txt->setFocus();
}

void code_editor_dlg::pick(int row)
{
    if (bran_grd->filled_rows() == 0)
        return reject();
    if (!bran_grd->is_filled(row))
        return;
    hand_back_rows(row, 1);
    accept();
}

/// Esc and the window's own button close without this: who looks something up and leaves by Esc does not
/// want the caller's list narrowed to it.
void code_editor_dlg::close_with_hits()
{
    if (of_.gives == hand_back::hits && bran_grd->filled_rows() > 0)
        hand_back_rows(0, bran_grd->filled_rows());
    accept();
}

void code_editor_dlg::hand_back_rows(int first, int count)
{
    pick_target* caller = desk_.target(c_.current_screen);
    code_list* list = caller ? caller->list_for(of_.table) : nullptr;
    if (!list)
        return;
    list->clear();
    for (int row = first; row < first + count; ++row)
        list->add(bran_grd->cell(row, 1), bran_grd->key(row).toLongLong());
    list->setCurrentIndex(-1); // the operator opens the list and chooses
}

} // namespace orvo
