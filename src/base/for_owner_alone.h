#pragma once

namespace orvo {

/// While one lives, what this process makes on the disk is for its user alone from the first moment on.
/// Rights that are taken away afterwards are taken too late: somebody may have opened the file meanwhile.
class for_owner_alone {
public:
    for_owner_alone();
    ~for_owner_alone();
    for_owner_alone(const for_owner_alone&) = delete;
    for_owner_alone& operator=(const for_owner_alone&) = delete;

private:
    unsigned former_;
};

} // namespace orvo
