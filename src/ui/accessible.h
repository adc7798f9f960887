#pragma once

class QApplication;

namespace orvo {

/// Where ORVO_ACCESSIBLE_IDS is 1, every control bears "#" and its object name as its accessible description,
/// so that tools can drive the program from outside by the names that the code knows.
void name_controls_for_tools(QApplication& app);

} // namespace orvo
