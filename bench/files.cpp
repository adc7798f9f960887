#include "milliseconds_of.h"

#include "files/write_list.h"

#include <QDir>
#include <QFile>

#include <fcntl.h>
#include <unistd.h>
#include <xlsxwriter.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

/// Writes a list of 100,000 members as a workbook and as lines, the client's way and with nothing in between:
/// the library alone with cells that are ready for it; the ready bytes straight to the disk; and the lines
/// once more with the toolkit's own codec, given all the text at once, before the disk. By turns, so that all
/// meet the same weather. Usage: bench_files FOLDER ROUNDS

using orvo::bench::milliseconds_of;

namespace {

constexpr int row_count = 100'000;
constexpr int column_count = 8;

std::vector<QStringList> make_rows()
{
    const QStringList families{"김", "이", "박", "최", "정", "남궁"};
    const QStringList given{"영희", "철수", "민서", "가온", "슬"};
    const QStringList towns{"서울특별시 중구 세종대로", "부산광역시 해운대구 센텀중앙로",
                            "제주특별자치도 제주시 첨단로"};
    std::vector<QStringList> rows;
    rows.reserve(row_count);
    for (int at = 0; at < row_count; ++at)
        rows.push_back({QString::number(9'001'010'000'000 + at * 7919LL).rightJustified(13, u'0'),
                        families[at % 6] + given[at % 5], QString::number(at + 1).rightJustified(8, u'0'),
                        QStringLiteral("제%1 초등학교 급식실").arg(at % 997),
                        QString::number(10000 + at % 50000),
                        QStringLiteral("%1 %2 %3호").arg(towns[at % 3]).arg(at % 300).arg(at % 1500),
                        QStringLiteral("010%1").arg(at * 37 % 100'000'000, 8, 10, QChar{u'0'}),
                        QStringLiteral("%L1").arg(at % 90 * 10'000)});
    return rows;
}

void check(bool done, const char* what)
{
    if (done)
        return;
    std::perror(what);
    std::exit(1);
}

void workbook_floor(const char* path, const std::vector<std::string>& cells)
{
    lxw_workbook_options options{};
    options.constant_memory = LXW_TRUE;
    lxw_workbook* book = workbook_new_opt(path, &options);
    lxw_worksheet* sheet = workbook_add_worksheet(book, nullptr);
    for (int at = 0; at < row_count; ++at)
        for (int column = 0; column < column_count; ++column)
            worksheet_write_string(sheet, static_cast<lxw_row_t>(at + 2), static_cast<lxw_col_t>(column),
                                   cells[static_cast<std::size_t>(at * column_count + column)].c_str(),
                                   nullptr);
    check(workbook_close(book) == LXW_NO_ERROR, path);
    const int file = ::open(path, O_WRONLY);
    check(file >= 0 && ::fsync(file) == 0, path);
    ::close(file);
}

void csv_floor(const char* path, const QByteArray& bytes)
{
    constexpr qsizetype part = 1 << 20;
    const int file = ::open(path, O_WRONLY | O_CREAT | O_TRUNC, 0644);
    check(file >= 0, path);
    for (qsizetype at = 0; at < bytes.size(); at += part) {
        const auto count = static_cast<std::size_t>(std::min(part, bytes.size() - at));
        check(::write(file, bytes.data() + at, count) == static_cast<ssize_t>(count), path);
    }
    check(::fsync(file) == 0, path);
    ::close(file);
}

void tell(const char* what, const char* who, double taken)
{
    std::printf("embedded 0 %s %s %d %.3f\n", what, who, row_count, taken);
}

} // namespace

int main(int argc, char** argv)
{
    check(argc == 3, "bench_files FOLDER ROUNDS");
    const QString folder = QString::fromLocal8Bit(argv[1]) + u'/';
    const int rounds = std::atoi(argv[2]);
    const std::vector<QStringList> rows = make_rows();
    std::vector<std::string> cells;
    for (const QStringList& row : rows)
        for (const QString& cell : row)
            cells.push_back(cell.toStdString());
    orvo::text_table list;
    for (const char* caption :
         {"주민번호", "성명", "면허번호", "근무처명", "우편번호", "주소", "전화번호", "회비"})
        list.columns.push_back({QString::fromUtf8(caption), false});
    list.row_count = row_count;
    list.row = [&rows](qint64 at) { return rows[static_cast<std::size_t>(at)]; };

    const QString ours = folder + QStringLiteral("ours");
    const QByteArray floor = QFile::encodeName(folder + QStringLiteral("floor"));
    const auto by_turns = [&](const char* what, int round, const auto& client_way, const auto& floor_way) {
        for (const bool is_client : {round % 2 == 0, round % 2 != 0}) {
            QFile::remove(ours);
            ::unlink(floor.constData());
            const double taken = is_client ? milliseconds_of(client_way) : milliseconds_of(floor_way);
            if (round > 0) // the first warms both
                tell(what, is_client ? "client" : "floor", taken);
        }
    };
    for (int round = 0; round <= rounds; ++round)
        by_turns(
            "workbook", round,
            [&] {
                orvo::write_workbook(ours, {"작성일자", "20261122"}, list);
            },
            [&] { workbook_floor(floor.constData(), cells); });
    orvo::write_csv(ours, list);
    QFile written{ours};
    check(written.open(QIODevice::ReadOnly), "the list");
    const QByteArray bytes = written.readAll();
    const QString text = QString::fromUtf8(bytes);
    for (int round = 0; round <= rounds * 4; ++round) {
        by_turns(
            "csv", round, [&] { orvo::write_csv(ours, list); }, [&] { csv_floor(floor.constData(), bytes); });
        ::unlink(floor.constData());
        tell("csv", "codec", milliseconds_of([&] { csv_floor(floor.constData(), text.toUtf8()); }));
    }
    QFile::remove(ours);
    ::unlink(floor.constData());
    return 0;
}
