#include "support/screens.h"
#include "ui/grid.h"

#include "hands/hands.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

using namespace orvo;

namespace {

/// A grid of a text and a number, with the rows (text, number, key) that are given.
struct at_grid {
    explicit at_grid(std::vector<grid::grid_row> rows = {{{"나", "1,000"}, "n"},
                                                         {{"다", "-2,000"}, "d"},
                                                         {{"가", "50"}, "g"},
                                                         {{"나", "0"}, "m"}})
    {
        open();
        of->fill(std::move(rows));
    }

    void open()
    {
        of = std::make_unique<grid>("a_grd", std::vector<grid_column>{{"이름", 100}, {"금액", 80, true}},
                                    settings);
        bring_up(*of, 400, 300);
    }
    QPoint edge_of(int column) const
    {
        const QHeaderView& header = *of->horizontalHeader();
        return {header.sectionViewportPosition(column) + header.sectionSize(column) - 1, header.height() / 2};
    }
    void click_caption(int column) const
    {
        const QPoint middle = edge_of(column) - QPoint{of->columnWidth(column) / 2, 0};
        QTest::mouseClick(of->horizontalHeader()->viewport(), Qt::LeftButton, {}, middle);
    }
    QString keys() const
    {
        QString all;
        for (int at = 0; at < of->filled_rows(); ++at)
            all += of->key(at).toString();
        return all;
    }
    const QAbstractItemModel& shown() const { return *static_cast<const QTableView&>(*of).model(); }

    QTemporaryDir folder;
    QSettings settings{folder.filePath("user.ini"), QSettings::IniFormat};
    std::unique_ptr<grid> of;
};

} // namespace

class grid_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void a_click_on_a_caption_sorts_data();
    void a_click_on_a_caption_sorts();
    void a_choice_follows_its_row();
    void new_rows_come_in_their_own_order();
    void chosen_rows_are_copied_as_they_stand();
    void keys_and_clicks_choose_rows();
    void widths_set_by_hand_are_kept();
    void widths_of_other_columns_are_not_taken();
};

void grid_test::a_click_on_a_caption_sorts_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("clicks");
    QTest::addColumn<QString>("order");
    QTest::newRow("text up, alike rows as they came") << 0 << 1 << "gnmd";
    QTest::newRow("text down") << 0 << 2 << "dnmg";
    QTest::newRow("number up") << 1 << 1 << "dmgn";
    QTest::newRow("number down") << 1 << 2 << "ngmd";
    QTest::newRow("and up again") << 1 << 3 << "dmgn";
}

void grid_test::a_click_on_a_caption_sorts()
{
    QFETCH(int, column);
    QFETCH(int, clicks);
    at_grid at;
    QCOMPARE(at.keys(), QStringLiteral("ndgm"));
    for (int click = 0; click < clicks; ++click)
        at.click_caption(column);
    QTEST(at.keys(), "order");
    QCOMPARE(at.shown().rowCount(), 5);
    QCOMPARE(at.shown().index(4, 0).data(), QVariant{}); // the empty one stays below
    QVERIFY(!at.of->is_filled(4));
}

void grid_test::a_choice_follows_its_row()
{
    at_grid at;
    click_row(at.of.get(), 1);
    at.click_caption(0);
    QCOMPARE(at.of->chosen_row(), 3);
    QCOMPARE(at.of->cell(3, 1), QStringLiteral("-2,000"));
    click_row(at.of.get(), 4);
    at.click_caption(1);
    QCOMPARE(at.of->currentIndex().row(), 4);
    QCOMPARE(at.of->chosen_row(), -1);
}

void grid_test::new_rows_come_in_their_own_order()
{
    at_grid at;
    at.click_caption(1);
    click_row(at.of.get(), 0);
    at.of->fill({{{"하", "9"}, "h"}, {{"가", "1"}, "a"}, {{{}, "3"}, "e"}});
    QCOMPARE(at.keys(), QStringLiteral("hae"));
    QCOMPARE(at.of->chosen_row(), -1);
    QVERIFY(at.of->is_filled(0));
    QVERIFY(!at.of->is_filled(2)); // nothing in its first column
    at.of->clear_rows();
    QCOMPARE(at.of->filled_rows(), 0);
    QCOMPARE(at.shown().rowCount(), 1);
}

void grid_test::chosen_rows_are_copied_as_they_stand()
{
    at_grid at;
    QApplication::clipboard()->setText("before");
    press(at.of.get(), Qt::Key_Space);
    QTest::keyClick(at.of.get(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("before")); // nothing is chosen
    at.click_caption(1);
    QTest::keyClick(at.of.get(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(at.of.get(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("다\t-2,000\n나\t0\n가\t50\n나\t1,000"));
}

void grid_test::keys_and_clicks_choose_rows()
{
    at_grid at;
    QList<int> chosen;
    at.of->on_row([&](int row) { chosen.append(row); });
    at.of->setFocus();
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Return, Qt::Key_PageDown, Qt::Key_Up})
        press(at.of.get(), key);
    click_row(at.of.get(), 0);
    click_row(at.of.get(), 4);
    QCOMPARE(chosen, (QList<int>{0, 1, 1, 3, 0, 4})); // keys pass the empty row, which only a click means
}

void grid_test::widths_set_by_hand_are_kept()
{
    at_grid at;
    QWidget* header = at.of->horizontalHeader()->viewport();
    const QPoint from = at.edge_of(0);
    QTest::mousePress(header, Qt::LeftButton, {}, from);
    QTest::mouseMove(header, from + QPoint{20, 0});
    QTest::mouseMove(header, from + QPoint{45, 0});
    QTest::mouseRelease(header, Qt::LeftButton, {}, from + QPoint{45, 0});
    QCOMPARE(at.of->columnWidth(0), 145);
    at.open();
    QCOMPARE(at.of->columnWidth(0), 145);
    QCOMPARE(at.of->columnWidth(1), 80);
}

void grid_test::widths_of_other_columns_are_not_taken()
{
    at_grid at;
    at.settings.setValue("widths/a_grd", QVariantList{10, 20, 30}); // of a version with three columns
    at.open();
    QCOMPARE(at.of->columnWidth(0), 100);
    at.of->setColumnWidth(0, 60); // by the program, not by hand
    at.open();
    QCOMPARE(at.of->columnWidth(0), 100);
}

ORVO_SCREEN_TESTS(grid_test)
#include "grid_test.moc"
