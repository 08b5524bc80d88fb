#pragma once

#include <QString>

namespace fadewell {

/// The acknowledgements that the about window shows. [main thread]
struct AboutCredits {
    QString heading; ///< localized
    QString notice;  ///< never localized: the library's name, then its licence as its file has it

    [[nodiscard]] static AboutCredits current();
};

} // namespace fadewell
