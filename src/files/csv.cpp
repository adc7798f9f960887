#include "files/new_file.h"
#include "files/pace.h"
#include "files/utf8.h"
#include "files/write_list.h"

#include <algorithm>
#include <charconv>
#include <future>

namespace orvo {

namespace {

using bytes = std::vector<char>;

/// Cells joined by commas. None is quoted, whatever it holds: the lists that go to the mailing house and into
/// the association's sheets have always been read so. A line break in a cell would tear its row in two.
char* put_cells(char* to, const QStringList& cells)
{
    for (const QString& each : cells) {
        to = put_utf8<line_breaks::as_blanks>(to, each);
        *to++ = ',';
    }
    if (!cells.isEmpty())
        --to;
    *to++ = '\r';
    *to++ = '\n';
    return to;
}

qsizetype room_of(const QStringList& cells)
{
    qsizetype room = 2;
    for (const QString& each : cells)
        room += utf8_room(each) + 1;
    return room;
}

/// Gathers lines and hands them to the disk in parts, which takes one while the next is gathered: the one
/// costs as much as the other.
class line_writer {
public:
    explicit line_writer(new_file& to) : to_{to}, lines_(part * 2), end_{lines_.data()} {}

    void put_mark() { end_ = std::copy_n("\xEF\xBB\xBF", 3, end_); }

    /// A line of cells, behind its number where it has one (else 0).
    void put(qint64 number, const QStringList& cells)
    {
        constexpr qsizetype longest_number = 20;
        const auto gathered = end_ - lines_.data();
        const auto needed = static_cast<std::size_t>(gathered + room_of(cells) + longest_number);
        if (needed > lines_.size()) {
            lines_.resize(needed * 2);
            end_ = lines_.data() + gathered;
        }
        if (number > 0) {
            end_ = std::to_chars(end_, end_ + longest_number, number).ptr;
            *end_++ = ',';
        }
        end_ = put_cells(end_, cells);
        if (end_ - lines_.data() >= part)
            hand_over();
    }

    void finish()
    {
        hand_over();
        written_.get();
    }

private:
    static constexpr std::ptrdiff_t part = 1 << 20;

    new_file& to_;
    bytes lines_;
    char* end_;
    bytes on_its_way_ = bytes(part * 2);
    std::future<void> written_; ///< last, so that the others outlive its work

    void hand_over()
    {
        if (written_.valid())
            written_.get();
        const auto count = end_ - lines_.data();
        std::swap(lines_, on_its_way_);
        end_ = lines_.data();
        written_ = std::async(std::launch::async, [this, count] { to_.write(on_its_way_.data(), count); });
    }
};

} // namespace

void write_csv(const QString& path, const text_table& list, progress* follow, const QString& number_caption)
{
    new_file file{path};
    if (list.row_count == 0)
        return file.finish();
    const bool is_numbered = !number_caption.isEmpty();
    QStringList captions;
    if (is_numbered)
        captions.append(number_caption);
    for (const text_table::column& each : list.columns)
        captions.append(each.caption);
    line_writer lines{file};
    lines.put_mark();
    lines.put(0, captions);
    pace pace{follow};
    for (qint64 at = 0; at < list.row_count; ++at) {
        lines.put(is_numbered ? at + 1 : 0, list.row(at));
        pace.step(at);
    }
    lines.finish();
    file.finish();
}

} // namespace orvo
