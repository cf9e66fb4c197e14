// The ids of the windows' controls; the tests find controls by them.
#pragma once

namespace quiller::win32::ids {

// DisplayForm
inline constexpr int kTitleLabel = 101;
inline constexpr int kOutputText = 102;
inline constexpr int kOkButton = 103;
inline constexpr int kOpenButton = 104;
inline constexpr int kAboutButton = 105;
// AskForm
inline constexpr int kQuestionLabel = 111;
inline constexpr int kAnswerText = 112;
inline constexpr int kButton1 = 113;
inline constexpr int kButton2 = 114;
// frmPopup and frmProgress
inline constexpr int kProgressTitle = 121;
inline constexpr int kProgressInfo = 122;
inline constexpr int kProgressText = 123;
inline constexpr int kCopyBar = 124;
inline constexpr int kTimeLabel = 125;
inline constexpr int kCancelButton = 126;
// DebugForm
inline constexpr int kPrgList = 131;
inline constexpr int kVariables = 132;
inline constexpr int kNumLabel = 133;
inline constexpr int kLineLabel = 134;
inline constexpr int kCodeLabel = 135;
inline constexpr int kStepButton = 136;  // StepButton(0); Terminate and Continue follow
inline constexpr int kTerminateButton = 137;
inline constexpr int kContinueButton = 138;
inline constexpr int kEditButton = 139;
inline constexpr int kReferenceButton = 140;
inline constexpr int kDebugAboutButton = 141;
inline constexpr int kSplitter = 142;
inline constexpr int kStateLabel = 143;
// The error window
inline constexpr int kErrorText = 151;
inline constexpr int kFileName = 152;
inline constexpr int kBrowseButton = 153;
inline constexpr int kErrorOk = 154;
inline constexpr int kErrorEnd = 155;
inline constexpr int kErrorDebug = 156;

}  // namespace quiller::win32::ids
