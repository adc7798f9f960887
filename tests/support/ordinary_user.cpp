#include "support/ordinary_user.h"

#include <unistd.h>

#include <cstdlib>

namespace orvo {

namespace {

constexpr uid_t nobody = 65534;

void become(uid_t user)
{
    uid_t real = 0;
    uid_t effective = 0;
    uid_t saved = 0;
    ::getresuid(&real, &effective, &saved);
    // The saved one stays the superuser's, so that there is a way back.
    if (saved == 0 && ::setresuid(user, user, 0) != 0)
        std::abort();
}

} // namespace

ordinary_user::ordinary_user()
{
    become(nobody);
}

ordinary_user::~ordinary_user()
{
    become(0);
}

} // namespace orvo
