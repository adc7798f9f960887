#include "base/cp949.h"

#include <QStringDecoder>

#include <algorithm>
#include <stdexcept>

namespace orvo {

namespace {

bool is_no_character(QChar each)
{
    return each.category() == QChar::Other_PrivateUse || (each >= QChar{0x80} && each < QChar{0xA0});
}

} // namespace

std::optional<QString> from_cp949(QByteArrayView bytes)
{
    // By the name "cp949" another table is found, which lacks three quarters of the syllables. A decoder with
    // a state would keep half a character at the end to itself.
    QStringDecoder decoder{"windows-949", QStringDecoder::Flag::Stateless};
    if (!decoder.isValid())
        throw std::runtime_error{
            "this program cannot read the Korean code page cp949: its Qt was built without ICU; "
            "convert the text to UTF-8"};
    const QString text = decoder.decode(bytes);
    if (decoder.hasError() || std::ranges::any_of(text, is_no_character))
        return {};
    return text;
}

} // namespace orvo
