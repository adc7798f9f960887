#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

namespace orvo {

/// Bytes of the Korean code page as text; nothing where they are none, or hold codes that each firm gives
/// shapes of its own. Throws std::runtime_error where Qt was built without the code page.
std::optional<QString> from_cp949(QByteArrayView bytes);

} // namespace orvo
