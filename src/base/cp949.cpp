#include "base/cp949.h"

#include <QStringDecoder>
#include <QStringEncoder>

#include <algorithm>
#include <stdexcept>

namespace orvo {

namespace {

bool is_no_character(QChar each)
{
    return each.category() == QChar::Other_PrivateUse || (each >= QChar{0x80} && each < QChar{0xA0});
}

// By the name "cp949" another table is found, which lacks three quarters of the syllables.
constexpr const char* code_page = "windows-949";

/// A converter with a state would keep half a character at the end to itself.
template <typename converter>
converter make_converter()
{
    converter made{code_page, QStringConverter::Flag::Stateless};
    if (!made.isValid())
        throw std::runtime_error{
            "this program does not know the Korean code page cp949: its Qt was built without ICU; "
            "use UTF-8"};
    return made;
}

} // namespace

std::optional<QString> from_cp949(QByteArrayView bytes)
{
    auto decoder = make_converter<QStringDecoder>();
    const QString text = decoder.decode(bytes);
    if (decoder.hasError() || std::ranges::any_of(text, is_no_character))
        return {};
    return text;
}

cp949_text to_cp949(QStringView text)
{
    auto whole = make_converter<QStringEncoder>();
    cp949_text encoded{whole.encode(text)};
    if (!whole.hasError() && std::ranges::none_of(text, is_no_character))
        return encoded;
    encoded.bytes.clear();
    for (qsizetype at = 0; at < text.size();) {
        const qsizetype units = text[at].isHighSurrogate() && at + 1 < text.size() ? 2 : 1;
        auto encoder = make_converter<QStringEncoder>();
        const QByteArray one = encoder.encode(text.mid(at, units));
        const bool is_lost = encoder.hasError() || is_no_character(text[at]);
        encoded.bytes += is_lost ? QByteArrayView{"?"} : QByteArrayView{one};
        encoded.lost += is_lost;
        at += units;
    }
    return encoded;
}

} // namespace orvo
