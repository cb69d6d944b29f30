// The Qt face of the file dialog: the filters as a user sees and picks them.
#include "QtFileDialog.h"
#include "WinFileDialog.h"

#include <QApplication>
#include <QFileDialog>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

struct Seen
{
    QStringList filters;
    QString selected;
    QString suffixAfterCsv;
};

// Opens the dialog for `filter` and looks at it from inside, then cancels it.
Seen look(const QString& filter)
{
    InstallQtFileDialog();
    Seen seen;
    QTimer::singleShot(0, [&seen] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        seen.filters = dialog->nameFilters();
        seen.selected = dialog->selectedNameFilter();
        if (seen.filters.size() > 1) {
            dialog->selectNameFilter(seen.filters[1]);
            Q_EMIT dialog->filterSelected(seen.filters[1]);
            seen.suffixAfterCsv = dialog->defaultSuffix();
        }
        dialog->reject();
    });
    CFileDialog dialog(FALSE, QStringLiteral("scn"), QStringLiteral("P-电气"), OFN_OVERWRITEPROMPT, filter);
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    return seen;
}

TEST(QtFileDialog, ShowsEachFilterOnceAndTheFirstIsChosen)
{
    const Seen seen = look(QStringLiteral("*.scn|*.scn|CSV (UTF-8)|*.csv|Excel 工作簿 (*.xlsx)|*.xlsx|"));
    EXPECT_EQ(seen.filters,
        (QStringList { QStringLiteral("*.scn (*.scn)"), QStringLiteral("CSV (UTF-8) (*.csv)"),
            QStringLiteral("Excel 工作簿 (*.xlsx)") }));
    EXPECT_EQ(seen.selected, QStringLiteral("*.scn (*.scn)"));
    // Choosing the spreadsheet makes a name typed without extension a ".csv".
    EXPECT_EQ(seen.suffixAfterCsv, QStringLiteral("csv"));
}

} // namespace
