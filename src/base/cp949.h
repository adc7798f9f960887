#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

namespace orvo {

/// Bytes of the Korean code page as text; nothing where they are none, or hold codes that each firm gives
/// shapes of its own. Throws std::runtime_error where Qt was built without the code page.
std::optional<QString> from_cp949(QByteArrayView bytes);

/// A text in the Korean code page. A character that it lacks is "?" there.
struct cp949_text {
    QByteArray bytes;
    qint64 lost = 0; ///< such characters
};
/// Throws as from_cp949 does.
cp949_text to_cp949(QStringView text);

} // namespace orvo
