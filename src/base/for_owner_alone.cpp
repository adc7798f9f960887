#include "base/for_owner_alone.h"

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

namespace orvo {

#ifdef Q_OS_UNIX

for_owner_alone::for_owner_alone() : former_{::umask(077)} {}

for_owner_alone::~for_owner_alone()
{
    ::umask(former_);
}

#else

// A user's folders are his own there.
for_owner_alone::for_owner_alone() : former_{} {}

for_owner_alone::~for_owner_alone() = default;

#endif

} // namespace orvo
