#pragma once

#include <unistd.h>

#include <cstdlib>

namespace orvo {

/// As long as it lives, the process has the rights of an ordinary user: the superuser could write everywhere.
class ordinary_user {
public:
    ordinary_user() { become(65534); }
    ~ordinary_user() { become(0); }
    ordinary_user(const ordinary_user&) = delete;
    ordinary_user& operator=(const ordinary_user&) = delete;

private:
    static void become(uid_t user)
    {
        uid_t real = 0;
        uid_t effective = 0;
        uid_t saved = 0;
        ::getresuid(&real, &effective, &saved);
        // The saved one stays the superuser's, so that there is a way back.
        if (saved == 0 && ::setresuid(user, user, 0) != 0)
            std::abort();
    }
};

} // namespace orvo
