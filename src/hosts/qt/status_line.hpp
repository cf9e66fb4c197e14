// The one-line status texts of the progress and copy windows.
#pragma once

class QLabel;

namespace quiller::qt {

// A plain-text label named `name` that the mouse can select, which a long path never widens
// beyond its window.
QLabel* status_line(const char* name);

}  // namespace quiller::qt
