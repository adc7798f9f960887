#pragma once

namespace orvo {

/// The database engines that the statements are sent to. The local file is embedded on every one of them.
enum class engine { embedded, postgresql, sqlserver };

/// The three databases of a client: the register, the queue of outgoing mail, and the file of the
/// workstation.
enum class database { server, mail, local };

} // namespace orvo
