#include "ui/save_dialog.h"

#include "ui/controls.h"
#include "ui/enter_walk.h"
#include "ui/member_panels.h"

#include <QLabel>

namespace orvo {

namespace {

constexpr int least_width = 340; // pixels

} // namespace

save_dialog::save_dialog(const QString& name, client& c, desk& at, QWidget* over, failures::policy how,
                         deed what)
    : dialog{name, c, over}, desk_{at}, how_{how}, what_{what}, whose_{new QLabel}, fields_{new QWidget},
      hint_{new QLabel}, save_{c}
{
    const bool saves = what == deed::saving;
    Image1 = saves ? primary_button(QStringLiteral("Image1"), QStringLiteral("확인(&O)"), "save")
                   : button(QStringLiteral("Image1"), QStringLiteral("삭제(&D)"), "trash-2");
    Image2 = (saves ? button : primary_button)(QStringLiteral("Image2"), QStringLiteral("취소(&C)"), "x");
    whose_->setObjectName(QStringLiteral("whose"));
    hint_->setObjectName(QStringLiteral("hint"));
    hint_->setForegroundRole(QPalette::PlaceholderText);
    hint_->setWordWrap(true);
    hint_->setAlignment(Qt::AlignTop);
    hint_->setMinimumWidth(least_width);
    hint_->setMinimumHeight(hint_->fontMetrics().lineSpacing() * 2); // so that no hint moves the buttons
    on_click(Image1, [this] { press_ok(); });
    connect(Image2, &QPushButton::clicked, this, [this] { reject(); });
}

void save_dialog::open(const QString& title, QLayout* fields, const std::function<void()>& load)
{
    fields->setContentsMargins(0, 0, 0, 0);
    fields_->setLayout(fields);
    QWidget* const to_the_right = nullptr;
    lay_out(below({heading(title), whose_, fields_, hint_,
                   what_ == deed::saving ? line({to_the_right, Image1, Image2})
                                         : line({Image1, to_the_right, Image2})}));
    const bool is_loaded = failures::guard(c_.say, failures::policy::report, [&] {
        whose_->setText(whose());
        load();
    });
    if (!is_loaded)
        Image1->setEnabled(false);
}

void save_dialog::open_to_delete(const QString& title, const std::function<QString()>& what_goes,
                                 const QString& question)
{
    auto* what = new QLabel;
    what->setObjectName(QStringLiteral("what_goes"));
    auto* asked = new QLabel{question};
    asked->setHidden(question.isEmpty());
    open(title, below({what, asked}), [&] { what->setText(what_goes()); });
    (new enter_walk{*this})->begin();
    Image2->setFocus();
}

void save_dialog::hint(const QString& sentence)
{
    hint_->setText(sentence);
}

void save_dialog::close_to_saving(const QString& why)
{
    hint(why);
    fields_->setEnabled(false);
    Image1->setEnabled(false);
}

void save_dialog::press_ok()
{
    if (!save_.is_under_way() && !passes_checks())
        return;
    if (!save_.press(how_, [this] { return plan(); }))
        return hold_what_is_stored();
    accept();
    refresh_panels();
}

/// Given up half way, a save has changed something all the same.
void save_dialog::reject()
{
    dialog::reject();
    if (save_.was_tried())
        refresh_panels();
}

/// On its own: a panel that cannot be read does not bring a stored save back to be saved again.
void save_dialog::refresh_panels()
{
    if (member_panels* panels = desk_.panels())
        failures::guard(c_.say, failures::policy::report, [this, panels] { refresh(*panels); });
}

/// What is stored can no longer be typed otherwise: it would look as if the next press stored that.
void save_dialog::hold_what_is_stored()
{
    if (!save_.is_under_way())
        return;
    hint(save_.state());
    fields_->setEnabled(false);
    Image1->setFocus(Qt::OtherFocusReason);
}

} // namespace orvo
