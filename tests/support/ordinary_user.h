#pragma once

namespace orvo {

/// As long as it lives, the process has the rights of an ordinary user: the superuser could write everywhere.
class ordinary_user {
public:
    ordinary_user();
    ~ordinary_user();
    ordinary_user(const ordinary_user&) = delete;
    ordinary_user& operator=(const ordinary_user&) = delete;
};

} // namespace orvo
