#pragma once

#include <QAbstractScrollArea>

#include <functional>
#include <vector>

namespace orvo {

struct receipt;

/// The pages of the queue one below the other. A page is drawn when it is seen, so that it does not matter
/// how many there are.
class receipt_view : public QAbstractScrollArea {
public:
    enum class fit { none, width, page };

    /// The receipts outlive the view.
    receipt_view(const QString& name, const std::vector<receipt>& all);

    int page_count() const;
    /// The page in use, from 1: the upper one of those that are seen, for the most part. 0 where there is
    /// none.
    int page() const;
    void go_to(int page);
    /// 1 is the size on paper.
    double zoom() const { return zoom_; }
    /// One step larger or smaller; the page in use stays.
    void zoom_by(int steps);
    void fit_to(fit what);
    /// Called when another page or size is seen.
    std::function<void()> changed = [] {};

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    const std::vector<receipt>& all_;
    double zoom_ = 1;
    fit fit_ = fit::page;

    double pixels_per_mm() const;
    QSize page_pixels() const;
    int step() const; ///< from the top of a page to that of the next
    void set_zoom(double zoom);
    void measure();
    void refit();
};

} // namespace orvo
