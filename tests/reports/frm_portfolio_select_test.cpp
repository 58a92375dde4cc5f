/// The choice of accounts for a report: what is listed, what a click stores, and where OK leads.

#include "platform/widgets/colors.h"
#include "shell/shell_run.h"

#include <gtest/gtest.h>

#include <QListWidget>
#include <QTest>

#include <algorithm>

namespace
{

class PortfolioSelect : public testing::Test
{
protected:
    PortfolioSelect() : m_run(m_folder)
    {
        m_run.SetOption("ShowTipOfDay", "0").SetOption("WebPriceUpdate", "0");
        m_run.GiveBalance(m_folder.SampleAccount(), "2026-03-02", 4);
        m_control = m_folder.File("ApplControl.mdb");
        QFile::copy(m_folder.File("ApplControl.xxx"), m_control);
        m_folder.Execute(m_control,
                         "INSERT INTO ApplicationTable (TableName, Field08, Field10) VALUES "
                         "('Portfolio', 'Broker O''Neil', 1), ('Portfolio', 'Savings', 0), "
                         "('AssetClass', 'Bonds', 1)");
        EXPECT_TRUE(m_run.App().Launch());
        m_run.App().Host().Show("frmPortfolioSelect");
        m_list = m_run.Control<QListWidget>("frmPortfolioSelect", "lstPortfolioNames");
    }
    /// "Savings*" is checked.
    QStringList Listed() const
    {
        QStringList texts;
        for (int row = 0; row < m_list->count(); ++row)
            texts << m_list->item(row)->text() +
                         (m_list->item(row)->checkState() == Qt::Checked ? "*" : "");
        return texts;
    }
    QString Stored(const QString &name) const
    {
        return m_folder.Value(m_control, QString("SELECT Field10 FROM ApplicationTable WHERE "
                                                 "TableName = 'Portfolio' AND Field08 = '%1'")
                                             .arg(QString(name).replace("'", "''")));
    }
    /// Clicks `fromLeft` pixels inside the row.
    void ClickRow(int row, int fromLeft)
    {
        const QRect place = m_list->visualItemRect(m_list->item(row));
        QTest::mouseClick(m_list->viewport(), Qt::LeftButton, {},
                          QPoint(place.left() + fromLeft, place.center().y()));
    }

    TestAppFolder m_folder;
    QString m_control;
    ShellRun m_run;
    QListWidget *m_list = nullptr;
};

} // namespace

TEST_F(PortfolioSelect, ListsTheAccountsThatWereOpenedWithTheirChoice)
{
    EXPECT_EQ(Listed(), QStringList({"Broker O'Neil*", "Savings", "Sample Portfolio"}));
    EXPECT_EQ(m_run.App().Host().Find("frmPortfolioSelect")->Caption(), "Portfolio Selection");
}

TEST_F(PortfolioSelect, StoresAClickOnTheNameAndOneOnTheBoxOnceEach)
{
    ClickRow(1, 60);
    EXPECT_EQ(Listed()[1], "Savings*");
    EXPECT_EQ(Stored("Savings"), "1");
    ClickRow(1, 10);
    EXPECT_EQ(Listed()[1], "Savings");
    EXPECT_EQ(Stored("Savings"), "0");
    ClickRow(0, 60);
    EXPECT_EQ(Stored("Broker O'Neil"), "0");
    EXPECT_EQ(Stored("Sample Portfolio"), "0");
}

TEST_F(PortfolioSelect, StoresWhatTheSpaceBarChecks)
{
    m_list->setCurrentRow(2);
    EXPECT_EQ(Stored("Sample Portfolio"), "0"); // going there is no choice
    QTest::keyClick(m_list, Qt::Key_Space);
    EXPECT_EQ(Stored("Sample Portfolio"), "1");
    EXPECT_EQ(Listed()[2], "Sample Portfolio*");
}

TEST_F(PortfolioSelect, ShowsAChoiceThatCouldNotBeStoredAsItWas)
{
    m_run.State().databases.gConnApplControl.ExecuteScript(
        "CREATE TRIGGER Refuse BEFORE UPDATE ON ApplicationTable "
        "BEGIN SELECT RAISE(ABORT, 'no room'); END");
    ClickRow(1, 60);
    EXPECT_EQ(m_run.boxes.Texts(), QStringList("Error number -2147467259\nDescription: no room"));
    EXPECT_EQ(Listed()[1], "Savings");
    EXPECT_EQ(Stored("Savings"), "0");
}

TEST_F(PortfolioSelect, GoesOnToTheOptionsOfTheReport)
{
    m_run.AddScreen("frmDateSelect");
    bool came = false;
    m_run.WhenModal("frmDateSelect", [&] {
        came = true;
        m_run.App().Host().Unload("frmDateSelect");
    });
    QTest::mouseClick(m_run.Control<QPushButton>("frmPortfolioSelect", "cmdOK"), Qt::LeftButton);
    EXPECT_TRUE(came);
    EXPECT_FALSE(m_run.App().Host().Loaded("frmPortfolioSelect"));
}

TEST_F(PortfolioSelect, ShowsItsBoxesOnADarkList)
{
    QPalette dark;
    dark.setColor(QPalette::Base, QColor(35, 35, 35));
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::Window, QColor(53, 53, 53));
    m_list->setPalette(dark);
    const QImage shown = m_list->viewport()->grab().toImage();
    const int middle = m_list->visualItemRect(m_list->item(1)).center().y();
    double best = 1;
    for (int x = 0; x < 15; ++x) // its box, which is not checked
        best = std::max(best, Contrast(shown.pixelColor(x, middle), QColor(35, 35, 35)));
    EXPECT_GE(best, 3);
}

TEST_F(PortfolioSelect, ClosesWithoutGoingOn)
{
    QTest::mouseClick(m_run.Control<QPushButton>("frmPortfolioSelect", "cmdClose"), Qt::LeftButton);
    EXPECT_FALSE(m_run.App().Host().Loaded("frmPortfolioSelect"));
    EXPECT_TRUE(m_run.boxes.Texts().isEmpty());
}
