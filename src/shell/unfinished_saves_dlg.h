#pragma once

#include "client/save_log.h"
#include "ui/dialog.h"

namespace orvo {

class grid;

/// All saves that this program can finish when they broke.
std::span<const save_act* const> known_saves();

/// Behind the login: offers the operator the saves that wait for him to be finished, and tells of those that
/// wait for somebody else.
void offer_unfinished_saves(client& c, QWidget* over);

/// The saves of this workstation that have not come to their end.
class unfinished_saves_dlg : public dialog {
public:
    unfinished_saves_dlg(client& c, QWidget* over);

private:
    std::vector<save_note> notes_;
    grid* save_grd;
    QPushButton *finish_img, *give_up_img, *close_img;

    void show_notes();
    const save_note* chosen();
    void finish();
    void give_up();
};

} // namespace orvo
