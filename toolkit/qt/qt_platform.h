// Before a QApplication is made: which Qt platform it will use, and whether that platform can
// start here. Qt ends the process when its platform cannot start (an unreachable display, a
// plug-in that does not load); a plug-in must never bring its host down, so the toolkit asks first
// and runs headless instead.
#pragma once

#include <string>

namespace toolkit::qt {

// Settles QT_QPA_PLATFORM on the first platform that can start (offscreen when there is no window
// system at all) and returns an empty string; otherwise returns why none can, naming the display.
std::string choosePlatform();

}  // namespace toolkit::qt
