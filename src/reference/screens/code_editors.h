#pragma once

#include "reference/screens/code_editor_dlg.h"

#include <memory>

namespace orvo {

/// The dialog of that member of the family, with all that is its own.
std::unique_ptr<code_editor_dlg> make_code_editor(const code_editor& of, client& c, desk& at, QWidget* over);

} // namespace orvo
