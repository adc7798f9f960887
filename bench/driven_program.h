#pragma once

#include "shell/start.h"

#include <QApplication>
#include <QMap>

#include <chrono>

class QListWidget;

namespace orvo::bench {

/// A QApplication that tells when the list of the console has been painted with rows in it: the moment at
/// which the update of the window that painted it returned, so that what stands beside the list is drawn too.
class watched_application : public QApplication {
public:
    using QApplication::QApplication;
    using moment = std::chrono::steady_clock::time_point;

    /// Forgets what was painted so far.
    void expect_list()
    {
        list_painted_ = {};
        window_painted_ = {};
    }
    bool is_list_on_screen() const { return window_painted_ != moment{}; }
    moment list_painted() const { return list_painted_; }
    moment window_painted() const { return window_painted_; }
    /// How often anything of that name was painted since it was asked last.
    int take_paints(const QString& name);

    bool notify(QObject* to, QEvent* event) override;

private:
    moment list_painted_{};
    moment window_painted_{};
    QMap<QString, int> paints_;
};

/// The client as it is, worked by events as an operator works it. Whatever does not go as expected ends the
/// process with a message: a step that did nothing would make a fine figure.
class driven_program {
public:
    explicit driven_program(watched_application& app) : app_{app} {}

    /// Starts on the folder that ORVO_HOME names and logs in as the demo's head office.
    void start();
    program& running() { return running_; }

    /// Milliseconds from just before Enter is posted to the return of the list's first paint, and to that of
    /// the window's update around it.
    struct search_times {
        double list = 0;
        double window = 0;
    };
    search_times search(const QString& name);

    int page_count() const;
    int page() const;
    /// Milliseconds from a click to nothing being left to paint, and how many of them this process had a
    /// processor for: the rest it waited, for the server or for the machine's other work.
    struct click_times {
        double passed = 0;
        double worked = 0;
    };
    click_times turn_page(bool forward);
    click_times click_member(int row);
    int members_on_page() const;
    /// Goes to a page unmeasured and unpainted.
    void go_to_page(int number);

private:
    watched_application& app_;
    program running_;

    click_times click_and_settle(QWidget* on, QPoint at);
    QWidget* widget(const char* name) const;
    QListWidget* list() const;
    QString text_of(const char* name) const;
};

} // namespace orvo::bench
