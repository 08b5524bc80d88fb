#pragma once

namespace fadewell {

/// Whether this process can open windows: the display that the environment names answers, and Qt
/// has what it needs for it. Qt itself would end the program. Before Qt.
[[nodiscard]] bool canOpenWindows();

} // namespace fadewell
