#include "files/new_file.h"
#include "files/throttle.h"
#include "files/utf8.h"
#include "files/write_list.h"

#include <QDir>
#include <QTemporaryDir>

#include <xlsxwriter.h>

#include <algorithm>
#include <future>

namespace orvo {

namespace {

constexpr qsizetype longest_cell = 32'767; ///< what the format takes, in UTF-16 units
constexpr int widest_column = 80;          ///< in digits; a longer address is read in its cell

/// How many digits wide a text stands in a Korean face: Hangul, Hanja, signs and full-width forms take two.
int digits_wide(QStringView text)
{
    int wide = 0;
    for (const QChar each : text) {
        const unsigned one = each.unicode();
        wide += one >= 0x1100 && (one < 0x2000 || one >= 0x2100) && (one < 0xFF61 || one > 0xFFDC);
    }
    return static_cast<int>(std::min<qsizetype>(text.size() + wide, widest_column));
}

[[noreturn]] void refuse(const QString& why)
{
    throw db_failure{failure_kind::other, why};
}

/// A workbook of one sheet, written row by row into a folder for temporary files: the library keeps one row
/// in memory. It does not look whether what it writes there arrives, so this does.
class sheet_writer {
public:
    explicit sheet_writer(const QByteArray& path, QByteArray folder) : folder_{std::move(folder)}
    {
        lxw_workbook_options options{};
        options.constant_memory = LXW_TRUE;
        options.tmpdir = folder_.data();
        book_ = workbook_new_opt(path.constData(), &options);
        sheet_ = book_ ? workbook_add_worksheet(book_, nullptr) : nullptr;
        if (!sheet_ || !sheet_->optimize_tmpfile) {
            drop();
            lack_room();
        }
        right_ = workbook_add_format(book_);
        format_set_align(right_, LXW_ALIGN_RIGHT);
        // Resident and telephone numbers are texts, of which the leading zeros count.
        worksheet_ignore_errors(sheet_, LXW_IGNORE_NUMBER_STORED_AS_TEXT, "A1:XFD1048576");
    }
    ~sheet_writer() { drop(); }
    sheet_writer(const sheet_writer&) = delete;
    sheet_writer& operator=(const sheet_writer&) = delete;

    void put_row(qint64 row, const QStringList& cells, const std::vector<text_table::column>& as = {})
    {
        if (static_cast<std::size_t>(cells.size()) > widths_.size())
            widths_.resize(static_cast<std::size_t>(cells.size()));
        for (std::size_t at = 0; at < static_cast<std::size_t>(cells.size()); ++at) {
            const QString& cell = cells[static_cast<qsizetype>(at)];
            if (cell.isEmpty())
                continue;
            widths_[at] = std::max(widths_[at], digits_wide(cell));
            worksheet_write_string(sheet_, static_cast<lxw_row_t>(row), static_cast<lxw_col_t>(at),
                                   in_utf8(cell), at < as.size() && as[at].is_number ? right_ : nullptr);
        }
        if (std::ferror(sheet_->optimize_tmpfile))
            lack_room();
    }

    /// Writes the workbook. The packing of a long list takes a second or more, in which the operator sees
    /// that the program lives.
    void finish(const std::function<void()>& look_up)
    {
        for (std::size_t at = 0; at < widths_.size(); ++at)
            if (widths_[at] > 0)
                worksheet_set_column(sheet_, static_cast<lxw_col_t>(at), static_cast<lxw_col_t>(at),
                                     widths_[at] * 1.05 + 1.2, nullptr);
        lxw_worksheet_write_single_row(sheet_);
        const bool arrived = std::fflush(sheet_->optimize_tmpfile) == 0;
        rows_size_ = std::ftell(sheet_->optimize_tmpfile);
        if (!arrived)
            lack_room();
        std::future<lxw_error> closing = std::async(
            std::launch::async, [book = std::exchange(book_, nullptr)] { return workbook_close(book); });
        while (closing.wait_for(std::chrono::milliseconds{33}) != std::future_status::ready)
            look_up();
        const lxw_error result = closing.get();
        if (result == LXW_ERROR_MEMORY_MALLOC_FAILED || result == LXW_ERROR_ZIP_BAD_ZIP_FILE)
            refuse(QStringLiteral("엑셀 파일로 저장하기에는 내용이 너무 많습니다."));
        if (result != LXW_NO_ERROR)
            lack_room();
    }

    /// Whether the packed sheet has all that was written. `packed` is the finished workbook.
    bool is_complete(QByteArrayView packed) const
    {
        // The directory at the end tells each part's size before it was packed.
        constexpr int directory_entry = 46;
        constexpr int its_size = 24;
        const qsizetype name = packed.lastIndexOf(QByteArrayView{"xl/worksheets/sheet1.xml"});
        if (name < directory_entry || packed.sliced(name - directory_entry, 4) != QByteArrayView{"PK\1\2"})
            return false;
        std::uint32_t size = 0;
        std::memcpy(&size, packed.data() + name - directory_entry + its_size, sizeof size);
        // What stands around the rows, at the least: the head, a line for each column, the end.
        const auto frame =
            560 + 50 * std::count_if(widths_.begin(), widths_.end(), [](int w) { return w > 0; });
        return static_cast<qint64>(size) >= rows_size_ + frame;
    }

private:
    QByteArray folder_;
    lxw_workbook* book_ = nullptr;
    lxw_worksheet* sheet_ = nullptr;
    lxw_format* right_ = nullptr;
    std::vector<int> widths_;
    std::vector<char> cell_;
    qint64 rows_size_ = 0;

    [[noreturn]] void lack_room() const { throw_disk_full(QFile::decodeName(folder_)); }

    void drop()
    {
        if (book_)
            lxw_workbook_free(book_);
        book_ = nullptr;
    }

    const char* in_utf8(QStringView cell)
    {
        if (cell.size() > longest_cell)
            cell = cell.first(cell[longest_cell - 1].isHighSurrogate() ? longest_cell - 1 : longest_cell);
        const auto room = static_cast<std::size_t>(utf8_room(cell)) + 1;
        if (room > cell_.size())
            cell_.resize(room);
        *put_utf8<text_as::it_is>(cell_.data(), cell) = 0;
        return cell_.data();
    }
};

} // namespace

void write_workbook(const QString& path, const QStringList& header, const text_table& list, progress* follow)
{
    if (list.row_count + 2 > LXW_ROW_MAX)
        refuse(QStringLiteral("엑셀 파일에는 1,048,576행까지만 저장할 수 있습니다."));
    new_file file{path}; // first, so that a name that cannot be written is told before the work
    QTemporaryDir folder;
    if (!folder.isValid())
        throw_disk_full(QDir::tempPath());
    QFile packed{folder.filePath(QStringLiteral("list.xlsx"))};
    sheet_writer sheet{QFile::encodeName(packed.fileName()), QFile::encodeName(folder.path())};
    sheet.put_row(0, header);
    QStringList captions;
    for (const text_table::column& each : list.columns)
        captions.append(each.caption);
    sheet.put_row(1, captions, list.columns);
    throttle asked{follow};
    for (qint64 at = 0; at < list.row_count; ++at) {
        sheet.put_row(at + 2, list.row(at), list.columns);
        asked.step(at + 1);
    }
    bool ended = false;
    sheet.finish([&] { ended = (follow && !follow->go_on(list.row_count)) || ended; });
    if (ended)
        throw db_failure{failure_kind::cancelled, QStringLiteral("취소했습니다.")};
    const char* bytes = nullptr;
    if (packed.open(QIODevice::ReadOnly))
        bytes = reinterpret_cast<const char*>(packed.map(0, packed.size()));
    if (!bytes || !sheet.is_complete({bytes, packed.size()}))
        throw_disk_full(folder.path());
    file.write(bytes, packed.size());
    file.finish();
}

} // namespace orvo
