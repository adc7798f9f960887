#include "files/new_file.h"
#include "files/pace.h"
#include "files/utf8.h"
#include "files/write_list.h"

#include <algorithm>
#include <array>
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

bytes first_line(const text_table& list, const QString& number_caption)
{
    QStringList captions;
    if (!number_caption.isEmpty())
        captions.append(number_caption);
    for (const text_table::column& each : list.columns)
        captions.append(each.caption);
    bytes line(static_cast<std::size_t>(3 + room_of(captions)));
    char* const behind_mark = std::copy_n("\xEF\xBB\xBF", 3, line.data());
    line.resize(static_cast<std::size_t>(put_cells(behind_mark, captions) - line.data()));
    return line;
}

/// Some rows on their way: fetched, turned into lines, written.
class group {
public:
    static constexpr qint64 size = 8192;

    /// `first_number` is that of the first row; 0 where the rows bear none.
    void begin(qint64 first_number)
    {
        rows_.clear();
        number_ = first_number;
    }
    void add(QStringList cells) { rows_.push_back(std::move(cells)); }

    /// To turn the texts into bytes takes longer than the disk does: others do it, beside the thread that
    /// fetches the rows and writes. They see nothing but the rows they are given.
    void start()
    {
        filled_ = std::async(std::launch::async, [this] { return fill(); });
    }

    /// Nothing where it holds nothing.
    void write(new_file& to)
    {
        if (filled_.valid())
            to.write(lines_.data(), filled_.get());
    }

private:
    std::vector<QStringList> rows_;
    qint64 number_ = 0;
    bytes lines_; ///< kept from one use to the next
    std::future<qint64> filled_;

    qint64 fill()
    {
        constexpr int longest_number = 20;
        qsizetype room = 0;
        for (const QStringList& each : rows_)
            room += room_of(each) + longest_number;
        if (room > std::ssize(lines_))
            lines_.resize(static_cast<std::size_t>(room));
        char* to = lines_.data();
        for (const QStringList& each : rows_) {
            if (number_ > 0) {
                to = std::to_chars(to, to + longest_number, number_++).ptr;
                *to++ = ',';
            }
            to = put_cells(to, each);
        }
        return to - lines_.data();
    }
};

} // namespace

void write_csv(const QString& path, const text_table& list, progress* follow, const QString& number_caption)
{
    new_file file{path};
    if (list.row_count == 0)
        return file.finish();
    const bytes captions = first_line(list, number_caption);
    file.write(captions.data(), std::ssize(captions));
    std::array<group, 4> groups;
    std::size_t next = 0;
    pace pace{follow};
    for (qint64 from = 0; from < list.row_count; from += group::size) {
        group& here = groups[next];
        next = (next + 1) % groups.size();
        here.write(file); // what it held before
        here.begin(number_caption.isEmpty() ? 0 : from + 1);
        for (qint64 at = from; at < std::min(from + group::size, list.row_count); ++at) {
            here.add(list.row(at));
            pace.step(at);
        }
        here.start();
    }
    for (std::size_t i = 0; i < groups.size(); ++i)
        groups[(next + i) % groups.size()].write(file);
    file.finish();
}

} // namespace orvo
