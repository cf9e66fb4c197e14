// `DebugForm`, the debugger window: the listing `PrgList` and the variables `VarList` divided by
// the splitter `picSplitter`, the labels `NumLabel`, `LineLabel`, `CodeLabel` and `StateLabel`,
// the buttons `StepButton` 0 Step, 1 Terminate, 2 Continue, and `cmdEdit`, `cmdReference`,
// `AboutButton`.
#pragma once

#include <QWidget>
#include <array>
#include <functional>
#include <vector>

#include "ui/debug_model.hpp"

class QLabel;
class QListWidget;
class QPushButton;
class QSplitter;

namespace quiller::qt {

class DebugForm final : public QWidget {
  public:
    explicit DebugForm(DebugModel& model);

    // Show line: the listing (refilled when it changed), the variables, the labels, the
    // current line selected and in view.
    void show_view(const DebugView& view);

    QListWidget* prg_list;
    QListWidget* var_list;
    QSplitter* pic_splitter;
    QLabel* num_label;
    QLabel* line_label;
    QLabel* code_label;
    QLabel* state_label;
    std::array<QPushButton*, 3> step_button{};
    QPushButton* cmd_edit;
    QPushButton* cmd_reference;
    QPushButton* about_button;

    std::function<void(int index)> on_step_button;  // after the model took the press
    std::function<void()> on_edit;
    std::function<void()> on_reference;
    std::function<void()> on_about;

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    DebugModel& model_;
    std::vector<std::string> shown_listing_;
};

}  // namespace quiller::qt
