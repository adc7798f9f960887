#include "dues/receipts/screens/receipt_progress.h"

#include "base/amount.h"

namespace orvo {

receipt_progress::receipt_progress(QWidget* over, QString text, qint64 all)
    : over_{over}, text_{std::move(text)}, all_{all}
{
    running_.start();
}

bool receipt_progress::go_on(qint64 so_far)
{
    if (running_.elapsed() < 1000)
        return true;
    if (!sign_)
        sign_ = std::make_unique<wait_sign>(over_);
    QString place;
    if (all_ > 0)
        place = with_separators(so_far) + QStringLiteral(" / ") + with_separators(all_);
    else if (so_far > 0)
        place = with_separators(so_far) + QStringLiteral("장");
    return sign_->show_wait(text_ + u' ' + place, true);
}

} // namespace orvo
