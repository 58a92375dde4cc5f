/// The options of the reports: captions, what is switched off, defaults, messages, and the way to the
/// finished workbook.

#include "read_back.h"

#include "platform/widgets/date_field.h"
#include "reports/frm_date_select.h"
#include "shell/shell_run.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QTest>

namespace
{

class DateSelect : public testing::Test
{
protected:
    DateSelect() : m_run(m_folder)
    {
        m_run.SetOption("ShowTipOfDay", "0").SetOption("WebPriceUpdate", "0");
        m_run.GiveBalance(m_folder.SampleAccount(), "2026-03-02", 4);
        m_folder.Execute(
            m_folder.SampleAccount(),
            "INSERT INTO DailyTracker (Symbol, Name, Shares, AvrgPrice, CurrPrice, TransDate, "
            "Time) "
            "VALUES ('O''NEIL', 'O''Neil & Café', 10, 100000, 120000, '2026-02-27', "
            "'10:00:00.000'), ('ZETA', 'Zeta', 0, 0, 0, '2026-02-27', '10:00:00.000');"
            "INSERT INTO PriceHistory (Symbol, Shares, PurchasePrice, TransDate, Time) VALUES "
            "('O''NEIL', 10, 100000, '2026-02-27', '10:00:00.000');"
            "INSERT INTO History (Symbol, Name, Description, Shares, Price, Amount, TransDate, "
            "Time) "
            "VALUES ('O''NEIL', 'O''Neil & Café', 'Bought', 10, 100000, -1000000, '2026-02-27', "
            "'10:00:00.000'), ('ZETA', 'Zeta', 'Bought', 5, 100000, -500000, '2025-02-27', "
            "'10:00:00.000'), ('ZETA', 'Zeta', 'Sold', -5, 120000, 600000, '2026-02-27', "
            "'10:00:00.000');");
        EXPECT_TRUE(m_run.App().Launch());
        m_run.State().services.openDocument = [this](const QString &path) {
            m_opened << path;
            return true;
        };
    }
    /// Chooses the entry and runs `act` in the dialog, which is closed afterwards if it still stands.
    void In(const QString &entry, const std::function<void()> &act)
    {
        bool came = false;
        m_run.WhenModal("frmDateSelect", [&] {
            came = true;
            act();
            m_run.App().Host().Unload("frmDateSelect");
        });
        m_run.Choose(entry);
        EXPECT_TRUE(came) << qPrintable(entry);
    }
    template <class Widget>
    Widget *Control(const char *name)
    {
        return m_run.Control<Widget>("frmDateSelect", name);
    }
    void Click(const char *name)
    {
        auto *button = Control<QAbstractButton>(name);
        QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(8, button->height() / 2));
    }
    /// Names of the controls that are switched off, "-" behind those out of view.
    QStringList Off()
    {
        QStringList names;
        for (const char *name : {"optAll", "optSelectedSec", "chkDateRange", "optDateRange",
                                 "dtpSelectFrom", "dtpSelectTo", "chkPrintTotals", "optSortByDate",
                                 "optSortBySymbol", "cmdOK", "cmdCancel", "cmdHelp"}) {
            const auto *control = Control<QWidget>(name);
            if (!control->isEnabled())
                names << QString(name) + (control->isVisible() ? "" : "-");
        }
        return names;
    }
    QString Beside(const char *name) const { return m_folder.File(name); }

    TestAppFolder m_folder;
    ShellRun m_run;
    QStringList m_opened;
};

} // namespace

TEST_F(DateSelect, OpensWithTheCaptionAndTheControlsOfItsReport)
{
    const QStringList lists{"optDateRange-", "chkPrintTotals"};
    const QStringList everything{"optDateRange-"};
    const QStringList tax{"optSelectedSec", "chkDateRange-", "chkPrintTotals", "optSortByDate",
                          "optSortBySymbol"};
    const QStringList tracker{"optAll",         "optSelectedSec", "chkDateRange",
                              "optDateRange-",  "dtpSelectFrom",  "dtpSelectTo",
                              "chkPrintTotals", "optSortByDate",  "optSortBySymbol"};
    struct Expected
    {
        const char *entry;
        const char *caption;
        QStringList off;
    };
    for (const Expected &report : std::vector<Expected>{
             {"mnuEXDetailHistory", "Transaction History - Option selection", lists},
             {"mnuEXProfitLoss", "Daily Profit & Loss - Option selection", everything},
             {"mnuEXHistoricalPriceList", "Historical Price List - Option selection", lists},
             {"mnuEXCostBasis", "", tax},
             {"mnuEXSummary", "Summary - Option selection", tax},
             {"mnuEXDailyTracker", "Daily Tracker Report", tracker},
             {"mnuEXDBSelectedSec", "Selected Security Daily Balance List - Option selection",
              everything},
             {"mnuEXDBPortfolio", "Portfolio Daily Balance List - Option selection", everything},
         })
        In(report.entry, [&] {
            EXPECT_EQ(m_run.App().Host().Find("frmDateSelect")->Caption(), report.caption);
            EXPECT_EQ(Off(), report.off) << report.entry;
            EXPECT_TRUE(m_run.Commands().Checked(report.entry));
        });
}

TEST_F(DateSelect, OfAPerformanceReportComesBehindTheChoiceOfAccounts)
{
    for (const auto &[entry, caption] : std::vector<std::pair<const char *, const char *>>{
             {"mnuEXPERFMonthly", "Monthly Performance - Option selection"},
             {"mnuEXPERFQuarterly", "Quarterly Performance - Option selection"},
             {"mnuEXPERFYearly", "Yearly Performance - Option selection"}}) {
        m_run.WhenModal("frmPortfolioSelect", [&] {
            QTest::mouseClick(m_run.Control<QPushButton>("frmPortfolioSelect", "cmdOK"),
                              Qt::LeftButton);
        });
        In(entry, [&] {
            EXPECT_EQ(m_run.App().Host().Find("frmDateSelect")->Caption(), caption);
            EXPECT_EQ(Off(), QStringList("optDateRange-"));
        });
        EXPECT_FALSE(m_run.App().Host().Loaded("frmPortfolioSelect"));
    }
}

TEST_F(DateSelect, ChecksItsEntryAloneAmongTheReports)
{
    In("mnuEXSummary", [] {});
    In("mnuEXProfitLoss", [] {});
    EXPECT_FALSE(m_run.Commands().Checked("mnuEXSummary"));
    EXPECT_TRUE(m_run.Commands().Checked("mnuEXProfitLoss"));
}

TEST_F(DateSelect, BeginsWithTheSameDefaultsEveryTime)
{
    for (const char *entry : {"mnuEXDetailHistory", "mnuEXSummary", "mnuEXDetailHistory"})
        In(entry, [&] {
            EXPECT_EQ(Control<DateField>("dtpSelectFrom")->date(), QDate(2026, 1, 1));
            EXPECT_EQ(Control<DateField>("dtpSelectTo")->date(), QDate(2026, 3, 2));
            EXPECT_TRUE(Control<QRadioButton>("optAll")->isChecked());
            EXPECT_TRUE(Control<QRadioButton>("optSortByDate")->isChecked());
            EXPECT_FALSE(Control<QCheckBox>("chkDateRange")->isChecked());
            EXPECT_FALSE(Control<QCheckBox>("chkPrintTotals")->isChecked());
            EXPECT_EQ(Control<QLineEdit>("txtSelectedSec")->text(), "O'NEIL");
            Control<DateField>("dtpSelectFrom")->setDate(QDate(2020, 2, 29));
            Control<QRadioButton>("optSortBySymbol")->setChecked(true);
            Control<QCheckBox>("chkDateRange")->setChecked(true);
            EXPECT_FALSE(Control<QRadioButton>("optDateRange")->isChecked() &&
                         !Control<QRadioButton>("optDateRange")->isVisible());
        });
}

TEST_F(DateSelect, HasTheCaptionsOfItsControls)
{
    In("mnuEXProfitLoss", [&] {
        EXPECT_EQ(Control<QRadioButton>("optAll")->text(), "All");
        EXPECT_EQ(Control<QRadioButton>("optSelectedSec")->text(), "Selected Security");
        EXPECT_EQ(Control<QCheckBox>("chkDateRange")->text(), "Date Range");
        EXPECT_EQ(Control<QRadioButton>("optDateRange")->text(), "Date Range");
        EXPECT_EQ(Control<QLabel>("lblFrom")->text(), "From");
        EXPECT_EQ(Control<QCheckBox>("chkPrintTotals")->text(), "Print Totals");
        EXPECT_EQ(Control<QRadioButton>("optSortByDate")->text(), "Date");
        EXPECT_EQ(Control<QRadioButton>("optSortBySymbol")->text(), "Security");
        EXPECT_EQ(m_run.Panel(1), "Please select option");
        EXPECT_TRUE(m_run.State().run.DateSelectOpen);
    });
    EXPECT_FALSE(m_run.State().run.DateSelectOpen);
    EXPECT_EQ(m_run.Panel(1), "");
}

TEST_F(DateSelect, TellsThatTheDailyTrackerReportNeedsNoChoice)
{
    In("mnuEXDailyTracker", [&] {
        EXPECT_EQ(m_run.Panel(1), "Click OK to create this report");
        Click("cmdCancel");
    });
    EXPECT_EQ(m_run.Panel(1), "");
    EXPECT_TRUE(m_opened.isEmpty());
}

TEST_F(DateSelect, WarnsOfASelectedSecurityThatIsNoneAndLetsItStand)
{
    m_run.State().selection.CurrentSymbol = " ";
    In("mnuEXDetailHistory", [&] {
        Click("optSelectedSec");
        EXPECT_EQ(m_run.boxes.Texts(),
                  QStringList("Please select a symbol by clicking on any row on the screen \n"
                              "before making this selection."));
        EXPECT_EQ(m_run.boxes.boxes[0].title, "Excel Editor");
        EXPECT_EQ(m_run.boxes.boxes[0].buttonsValue, 48);
        EXPECT_TRUE(Control<QRadioButton>("optSelectedSec")->isChecked());
        Click("cmdOK");
    });
    EXPECT_EQ(m_run.Panel(1), "Report completed");
    EXPECT_EQ(ReadBack(Beside("Transaction History.xls")).Rows().size(), 2u); // the header
}

TEST_F(DateSelect, TakesTheSelectedSecurityWithoutAWord)
{
    In("mnuEXDetailHistory", [&] {
        Click("optSelectedSec");
        Click("cmdOK");
    });
    EXPECT_TRUE(m_run.boxes.Texts().isEmpty());
    const std::vector<std::string> rows = ReadBack(Beside("Transaction History.xls")).Rows();
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[2], "@2026-02-27|O'NEIL|O'Neil & Café|Bought|=10|=10|=-100");
}

TEST_F(DateSelect, RefusesAllTogetherWithADateRangeForTheTaxReports)
{
    for (const char *entry : {"mnuEXSummary", "mnuEXCostBasis"}) {
        m_run.boxes.boxes.clear();
        In(entry, [&] {
            Control<QCheckBox>("chkDateRange")->setChecked(true); // which the user cannot
            Click("optAll");
        });
        EXPECT_EQ(m_run.boxes.Texts(),
                  QStringList("For this type of report only one of the options can be \n"
                              "selected, not both!"));
        EXPECT_EQ(m_run.boxes.boxes[0].title, "Excel Editor");
    }
    m_run.boxes.boxes.clear();
    In("mnuEXDetailHistory", [&] {
        Click("chkDateRange");
        Click("optAll");
    });
    EXPECT_TRUE(m_run.boxes.boxes.empty());
}

TEST_F(DateSelect, WritesTheGainsOfTodayBeforeAReportReadsThem)
{
    m_folder.Execute(m_folder.SampleAccount(), "DELETE FROM PortfolioDailyBalance");
    m_run.State().selection.CurrentSymbol = "ZETA";
    In("mnuEXDBPortfolio", [&] { Click("cmdOK"); });
    EXPECT_EQ(m_run.State().selection.CurrentSymbol, "ZETA");
    EXPECT_EQ(ReadBack(Beside("Amount Gain List.xls")).Rows()[1],
              "@2026-03-02|Portfolio|=20"); // 10 x (12 - 10)
}

TEST_F(DateSelect, RunsATaxReportByItsOwnDateRange)
{
    In("mnuEXSummary", [&] {
        Click("optDateRange");
        Control<DateField>("dtpSelectTo")->setDate(QDate(2026, 2, 26));
        Click("cmdOK");
    });
    EXPECT_EQ(ReadBack(Beside("Summary.xls")).Rows().size(), 4u); // no sale in the range
    In("mnuEXSummary", [&] {
        Click("optDateRange");
        Click("cmdOK");
    });
    EXPECT_EQ(ReadBack(Beside("Summary.xls")).Rows()[2],
              "Zeta|@2025-02-27|@2026-02-27|=60|=-50|=10");
}

TEST_F(DateSelect, RefusesARangeThatEndsBeforeItBegins)
{
    for (const auto &[entry, range, file] :
         std::vector<std::tuple<const char *, const char *, const char *>>{
             {"mnuEXDetailHistory", "chkDateRange", "Transaction History.xls"},
             {"mnuEXProfitLoss", "chkDateRange", "Daily Profit Loss.xls"},
             {"mnuEXHistoricalPriceList", "chkDateRange", "Historical Price List.xls"},
             {"mnuEXSummary", "optDateRange", "Summary.xls"},
             {"mnuEXCostBasis", "optDateRange", "Summary.xls"},
             {"mnuEXDBPortfolio", "chkDateRange", "Amount Gain List.xls"}}) {
        m_run.boxes.boxes.clear();
        In(entry, [&] {
            Click(range);
            Control<DateField>("dtpSelectFrom")->setDate(QDate(2026, 3, 2));
            Control<DateField>("dtpSelectTo")->setDate(QDate(2026, 3, 1));
            Click("cmdOK");
            ASSERT_TRUE(m_run.App().Host().Loaded("frmDateSelect")) << entry;
            EXPECT_EQ(m_run.boxes.Texts(),
                      QStringList("'From' date can not be greater than 'To' date. \n"
                                  "Please make another selection."));
            EXPECT_EQ(m_run.boxes.boxes[0].title, "Excel Editor");
            EXPECT_EQ(m_run.boxes.boxes[0].buttonsValue, 48);
            EXPECT_EQ(m_run.Panel(1), "Please select option");
            EXPECT_FALSE(QFile::exists(Beside(file))) << entry;
            EXPECT_EQ(m_run.App().Host().Find("frmDateSelect")->focusWidget(),
                      Control<DateField>("dtpSelectFrom"));

            Control<DateField>("dtpSelectTo")->setDate(QDate(2026, 3, 2)); // one day is a range
            Click("cmdOK");
        });
        EXPECT_EQ(m_run.boxes.boxes.size(), 1u);
        EXPECT_TRUE(QFile::exists(Beside(file))) << entry;
        QFile::remove(Beside(file));
    }
}

TEST_F(DateSelect, TakesNoOffenceAtDatesThatAreNotUsed)
{
    In("mnuEXSummary", [&] {
        Control<DateField>("dtpSelectTo")->setDate(QDate(2020, 1, 1));
        Click("optAll");
        Click("cmdOK");
    });
    EXPECT_TRUE(m_run.boxes.boxes.empty());
    EXPECT_EQ(ReadBack(Beside("Summary.xls")).Rows().size(), 5u);
}

TEST_F(DateSelect, ChoosesTheDateRangeWhenADateIsPicked)
{
    for (const char *picker : {"dtpSelectFrom", "dtpSelectTo"}) {
        In("mnuEXCostBasis", [&] {
            EXPECT_TRUE(Control<QRadioButton>("optAll")->isChecked());
            Control<DateField>(picker)->setFocus();
            QTest::keyClick(Control<DateField>(picker), Qt::Key_Up);
            EXPECT_TRUE(Control<QRadioButton>("optDateRange")->isChecked());
            EXPECT_FALSE(Control<QRadioButton>("optAll")->isChecked());
            Click("optAll"); // after all
            EXPECT_FALSE(Control<QRadioButton>("optDateRange")->isChecked());
        });
        In("mnuEXDetailHistory", [&] {
            Click("optSelectedSec");
            Control<DateField>(picker)->setFocus();
            QTest::keyClick(Control<DateField>(picker), Qt::Key_Up);
            EXPECT_TRUE(Control<QCheckBox>("chkDateRange")->isChecked());
            EXPECT_TRUE(Control<QRadioButton>("optSelectedSec")->isChecked());
        });
    }
    EXPECT_TRUE(m_run.boxes.boxes.empty());
}

TEST_F(DateSelect, WritesTheDailyTrackerAsItStandsAndOpensItUnsaved)
{
    In("mnuEXDailyTracker", [&] { Click("cmdOK"); });
    ASSERT_EQ(m_opened.size(), 1);
    const std::vector<std::string> rows = ReadBack(m_opened[0]).Rows();
    ASSERT_EQ(rows.size(), 8u);
    EXPECT_EQ(rows[0], "Date:02-Mar-26");
    EXPECT_EQ(rows[2], "Symbol|Shares|Avg Price|Price|Gain|% Gain |P&L Today|P&L To Date |"
                       "Actual P&L |Invested Value|Invested To Date|Trans Cost Today|"
                       "Trans Cost To Date|Trans Today |Trans To Date|Name|Trans Date|Time");
    EXPECT_EQ(rows[3], "O'NEIL|=10|=10|=12|=20|=0.2|=0|=0|=0|=120|=0|=0|=0|=0|=0|O'Neil & Café|"
                       "@2026-02-27|@10:00:00");
    EXPECT_EQ(rows[6].rfind("Current Balance*|Gain Total|P&L Today|", 0), 0u) << rows[6];
    EXPECT_EQ(rows[7].rfind("=0|=20|=0|", 0), 0u) << rows[7];
    EXPECT_EQ(m_run.Panel(1), "Report completed");
}

TEST_F(DateSelect, OpensTheDailyTrackerForItsReportWhenItIsClosed)
{
    m_run.App().Host().Unload("frmDailyTracker");
    In("mnuEXDailyTracker", [&] { Click("cmdOK"); });
    EXPECT_TRUE(m_run.App().Host().Loaded("frmDailyTracker"));
    ASSERT_EQ(m_opened.size(), 1);
    EXPECT_EQ(ReadBack(m_opened[0]).Rows().size(), 8u);
}

TEST_F(DateSelect, RunsAListReportWithTheDailyTrackerClosed)
{
    m_run.App().Host().Unload("frmDailyTracker");
    In("mnuEXDetailHistory", [&] { Click("cmdOK"); });
    EXPECT_FALSE(m_run.App().Host().Loaded("frmDailyTracker"));
    EXPECT_EQ(ReadBack(Beside("Transaction History.xls")).Rows().size(), 5u);
}

TEST_F(DateSelect, SaysNothingOfCompletionWhenTheWorkbookCouldNotBeWritten)
{
    QDir(m_folder.Path()).mkpath("Summary.xls/kept");
    In("mnuEXSummary", [&] { Click("cmdOK"); });
    EXPECT_EQ(m_run.boxes.boxes.size(), 1u);
    EXPECT_EQ(m_run.Panel(1), "");
    EXPECT_FALSE(m_run.App().Host().Loaded("frmDateSelect"));
}

TEST_F(DateSelect, NeedsASelectedSecurityForItsGainList)
{
    m_run.State().selection.CurrentSymbol.clear();
    m_run.Choose("mnuEXDBSelectedSec");
    EXPECT_EQ(m_run.boxes.Texts(),
              QStringList("No security has been selected, select one now to print."));
    EXPECT_EQ(m_run.boxes.boxes[0].title, "Application Editor");
    EXPECT_FALSE(m_run.App().Host().Loaded("frmDateSelect"));
    EXPECT_FALSE(m_run.Commands().Checked("mnuEXDBSelectedSec"));
}

TEST_F(DateSelect, ClosesByEscapeAndStartsByEnter)
{
    In("mnuEXSummary", [&] {
        QTest::keyClick(Control<QRadioButton>("optAll"), Qt::Key_Escape);
        EXPECT_FALSE(m_run.App().Host().Loaded("frmDateSelect"));
    });
    EXPECT_TRUE(m_opened.isEmpty());
    In("mnuEXSummary", [&] { QTest::keyClick(Control<QRadioButton>("optAll"), Qt::Key_Return); });
    EXPECT_EQ(m_opened, QStringList(Beside("Summary.xls")));
}

TEST_F(DateSelect, ForgetsTheUnsavedWorkbooksAtTheEndOfTheProgram)
{
    In("mnuEXDailyTracker", [&] { Click("cmdOK"); });
    ASSERT_EQ(m_opened.size(), 1);
    EXPECT_TRUE(QFile::exists(m_opened[0]));
    m_run.Renew();
    EXPECT_FALSE(QFile::exists(m_opened[0]));
}
