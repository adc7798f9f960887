#include "base/cp949.h"
#include "files/csv_cell.h"
#include "files/new_file.h"
#include "files/throttle.h"
#include "files/utf8.h"
#include "files/write_list.h"

#include <algorithm>
#include <charconv>
#include <future>

namespace orvo {

namespace {

using bytes = std::vector<char>;

/// A number without its separators. Out of the way of the cells that are written as they are.
[[gnu::noinline]] char* put_digits(char* to, QStringView number)
{
    for (const QChar each : number)
        if (each != u',')
            *to++ = static_cast<char>(each.unicode());
    return to;
}

/// Nothing is quoted, whatever a cell holds: as in use; must not change.
char* put_cell(char* to, const QString& cell, bool is_number)
{
    if (must_be_held_down(cell))
        *to++ = '\'';
    char* const end = put_utf8<text_as::cell_of_a_line>(to, cell);
    const bool has_separators = is_number && end - to != cell.size(); // a comma is written wider than it was
    return has_separators && is_grouped_number(cell) ? put_digits(to, cell) : end;
}

/// Gathers lines and hands them to the disk in parts, which takes one while the next is gathered: the one
/// costs as much as the other.
class line_writer {
public:
    line_writer(new_file& to, csv_encoding encoding)
        : to_{to}, encoding_{encoding}, lines_(part * 2), end_{lines_.data()}
    {
        if (encoding == csv_encoding::utf8)
            end_ = std::copy_n("\xEF\xBB\xBF", 3, end_);
    }

    /// A line of cells, behind its number where it has one (else 0).
    void put(qint64 number, const QStringList& cells, const std::vector<text_table::column>& as)
    {
        constexpr qsizetype longest_number = 20;
        char* to = with_room(end_, longest_number);
        if (number > 0)
            to = std::to_chars(to, to + longest_number, number).ptr;
        bool is_first = number == 0;
        auto column = as.begin();
        for (const QString& cell : cells) {
            to = with_room(to, utf8_room(cell) + 2); // a comma and an apostrophe
            if (!std::exchange(is_first, false))
                *to++ = ',';
            to = put_cell(to, cell, column != as.end() && (column++)->is_number);
        }
        to = with_room(to, 2);
        *to++ = '\r';
        *to++ = '\n';
        end_ = to;
        if (end_ - lines_.data() >= part)
            hand_over();
    }

    /// Returns the number of characters that were lost.
    qint64 finish()
    {
        hand_over();
        written_.get();
        return lost_;
    }

private:
    static constexpr std::ptrdiff_t part = 1 << 20;

    new_file& to_;
    csv_encoding encoding_;
    qint64 lost_ = 0;
    bytes lines_;
    char* end_;
    bytes on_its_way_ = bytes(part * 2);
    std::future<void> written_; ///< last, so that the others outlive its work

    /// The place `to`, with that much room behind it.
    char* with_room(char* to, qsizetype needed)
    {
        const auto gathered = to - lines_.data();
        if (const auto whole = static_cast<std::size_t>(gathered + needed); whole > lines_.size())
            lines_.resize(whole * 2);
        return lines_.data() + gathered;
    }

    void hand_over()
    {
        if (written_.valid())
            written_.get();
        const auto count = end_ - lines_.data();
        std::swap(lines_, on_its_way_);
        end_ = lines_.data();
        written_ = std::async(std::launch::async, [this, count] { write(on_its_way_.data(), count); });
    }

    void write(const char* lines, std::ptrdiff_t count)
    {
        if (encoding_ == csv_encoding::utf8)
            return to_.write(lines, count);
        const cp949_text encoded = to_cp949(QString::fromUtf8(lines, count));
        lost_ += encoded.lost;
        to_.write(encoded.bytes.constData(), encoded.bytes.size());
    }
};

} // namespace

qint64 write_csv(const QString& path, const text_table& list, progress* follow, const QString& number_caption,
                 csv_encoding encoding)
{
    new_file file{path};
    if (list.row_count == 0) {
        file.finish();
        return 0;
    }
    const bool is_numbered = !number_caption.isEmpty();
    QStringList captions;
    if (is_numbered)
        captions.append(number_caption);
    for (const text_table::column& each : list.columns)
        captions.append(each.caption);
    line_writer lines{file, encoding};
    lines.put(0, captions, {});
    throttle asked{follow};
    for (qint64 at = 0; at < list.row_count; ++at) {
        lines.put(is_numbered ? at + 1 : 0, list.row(at), list.columns);
        asked.step(at);
    }
    const qint64 lost = lines.finish();
    file.finish();
    return lost;
}

} // namespace orvo
