#pragma once

#include "client/prompts.h"

#include <cstdint>

namespace orvo {

/// The shared error box: sets the mouse pointer back to normal and shows, by the error's number, the words
/// that operators know it by. A cancelled file dialog shows nothing.
void show_error(prompts& say, std::int32_t err_no, const QString& err_text);

} // namespace orvo
