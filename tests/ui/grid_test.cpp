#include "support/screens.h"
#include "ui/grid.h"

#include "hands/hands.h"
#include "support/test_register.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QTest>

using namespace orvo;

namespace {

/// A grid of a text and a number, four rows (text, number, key).
struct at_grid {
    at_grid()
    {
        open();
        of->fill({{{"나", "1,000"}, "n"}, {{"다", "-2,000"}, "d"}, {{"가", "50"}, "g"}, {{"나", "0"}, "m"}});
    }

    void open()
    {
        of = std::make_unique<grid>("a_grd", std::vector<grid_column>{{"이름", 100}, {"금액", 80, true}},
                                    running.c);
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

    running_client running{engine::embedded};
    std::unique_ptr<grid> of;
};

} // namespace

class grid_test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void a_click_on_a_caption_sorts()
    {
        at_grid at;
        QCOMPARE(at.keys(), QStringLiteral("ndgm"));
        // Text up with alike rows as they came, text down, number up and down.
        for (const auto& [column, order] :
             {std::pair{0, "gnmd"}, {0, "dnmg"}, {1, "dmgn"}, {1, "ngmd"}, {1, "dmgn"}}) {
            at.click_caption(column);
            QCOMPARE(at.keys(), QString{order});
            QVERIFY(!at.of->is_filled(4)); // the empty one stays below
        }
    }

    void a_choice_follows_its_row_and_ends_with_it()
    {
        at_grid at;
        click_row(at.of.get(), 1);
        at.click_caption(0);
        QCOMPARE(at.of->chosen_row(), 3);
        QCOMPARE(at.of->cell(3, 1), QStringLiteral("-2,000"));
        at.of->fill({{{"하", "9"}, "h"}, {{"가", "1"}, "a"}});
        QCOMPARE(at.keys(), QStringLiteral("ha")); // as they came
        QCOMPARE(at.of->chosen_row(), -1);
    }

    void chosen_rows_are_copied_as_they_stand()
    {
        at_grid at;
        at.click_caption(1);
        QTest::keyClick(at.of.get(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(at.of.get(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("다\t-2,000\n나\t0\n가\t50\n나\t1,000"));
    }

    void keys_and_clicks_choose_rows()
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
        const auto middle = [&](int row) {
            return at.of->visualRect(at.of->model()->index(row, 0)).center();
        };
        QWidget* const rows = at.of->viewport();
        QTest::mousePress(rows, Qt::RightButton, {}, middle(2));
        QTest::mousePress(rows, Qt::LeftButton, {}, middle(0));
        QTest::mouseMove(rows, middle(3));
        QTest::mouseRelease(rows, Qt::LeftButton, {}, middle(3));
        QTest::mouseClick(rows, Qt::LeftButton, Qt::ControlModifier, middle(3));
        QCOMPARE(chosen.mid(6), (QList<int>{2, 3, 3}));
        QCOMPARE(at.of->chosen_row(), 3);
    }

    void widths_set_by_hand_are_kept()
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
};

ORVO_SCREEN_TESTS(grid_test)
#include "grid_test.moc"
