#pragma once

namespace orvo {

class client;

/// Tells that the local file is not there or damaged, and what becomes of what was in it. True where the
/// operator wants a new one.
bool offer_new_local_file(const client& c);

/// Makes it, and tells what was carried over from the earlier one. Throws db_failure.
void make_new_local_file(client& c);

} // namespace orvo
