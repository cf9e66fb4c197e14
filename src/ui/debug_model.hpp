// The debugger window (`DebugForm`) without a toolkit: the listing of the program (`PrgList`),
// numbered "00# " and indented by block depth, the labels of the current line, and the handshake
// between the window's buttons (`StepButton` 0 Step, 1 Terminate, 2 Continue) and the waiting
// interpreter through the state word of `StateLabel`.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ui/event_wait.hpp"

namespace quiller {

struct DebugView;
enum class DebugAction;

// A program line and its effect on the listing's indentation, as its statement defines it.
struct ListingLine {
    std::string keyword;  // lower case
    std::string arguments;
    bool outdent_before = false;  // closes a block: this line sits a level shallower
    bool indent_after = false;    // opens a block: the lines after it sit a level deeper
};

// One entry per program line: the number formatted "00# ", then the indentation (four blanks a
// level, never below the margin), then keyword and arguments.
std::vector<std::string> debug_listing(const std::vector<ListingLine>& lines);

namespace debug_button {
inline constexpr int kStep = 0;
inline constexpr int kTerminate = 1;
inline constexpr int kContinue = 2;
}  // namespace debug_button

class DebugModel {
  public:
    // Show line: the labels of the stop (the host fills the lists from the view).
    void show(const DebugView& view);
    const std::string& num_label() const { return num_label_; }
    const std::string& line_label() const { return line_label_; }  // the line as written
    const std::string& code_label() const { return code_label_; }  // as it will run
    // The listing row (0-based) to select: the current line.
    int selected_row() const { return selected_row_; }
    // The first row to show so that the current line is in view in a list of `visible` rows:
    // kept while the line is in view, else the line is placed a third of the way down.
    static int top_row(int current_row, int visible, int top, int rows);

    // "Wait", "Step", "Continue" or "Terminate".
    const std::string& state() const { return state_; }
    // `StepButton(index)`: the state word of the choice.
    void press(int index);
    // The interpreter's side: "Wait", then process events every 100 ms until a button changed
    // the state. Returns the choice. (The window's close box counts as Continue.)
    DebugAction wait(const EventWait& w);

  private:
    std::string num_label_;
    std::string line_label_;
    std::string code_label_;
    int selected_row_ = -1;
    std::string state_ = "Wait";
};

}  // namespace quiller
