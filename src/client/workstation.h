#pragma once

namespace orvo {

class client;

/// Behind the login: where another operator worked here last, or the same one for another branch, the copy of
/// the last search and the receipts in the queue are emptied, as they may hold whom this one does not see.
/// What is kept by operator stays. A local file that cannot be written stays as it is.
void take_over_workstation(client& c);

} // namespace orvo
