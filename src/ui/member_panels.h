#pragma once

#include "ui/desk.h"

namespace orvo {

/// The panels of the open member, which dialogs bring up to date after a save. They stand at the desk as long
/// as the console is open; a dialog that was opened from elsewhere finds none.
class member_panels {
public:
    explicit member_panels(desk& at) : at_{at} { at_.enter(this); }
    virtual ~member_panels() { at_.leave(this); }
    member_panels(const member_panels&) = delete;
    member_panels& operator=(const member_panels&) = delete;

    virtual void show_dues() = 0;
    virtual void show_dues_lines() = 0;
    virtual void show_contract() = 0;
    virtual void show_company() = 0;

private:
    desk& at_;
};

} // namespace orvo
