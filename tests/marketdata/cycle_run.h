#pragma once

/// A price cycle on real files and real pages: an account of its own, quote sites on a loopback
/// server, a clock that stands still, boxes that the test answers, and screens that only tell what
/// is asked of them. It is Monday 2026-03-02, 10:15:00; daily prices of the day are loaded already,
/// unless a test sets LastPriceUpdate back.
///
///     CycleRun run;
///     run.Site("Quotes", "/q").Position("ACME", 100, 10);
///     run.server.On("/q", Quotes({{"ACME", "12.50"}}));
///     run.FirstCycle();
///     run.PriceOf("ACME")                 "12.5000"

#include "marketdata/price_cycle.h"
#include "support/loopback_server.h"
#include "support/print_qt.h"
#include "support/scripted_dialogs.h"
#include "support/test_app_folder.h"

#include "platform/simulated_clock.h"

#include <chrono>
#include <memory>
#include <vector>

/// A page of quotes in the form that CycleRun's sites read.
inline LoopbackServer::Page Quotes(const std::vector<std::pair<QByteArray, QByteArray>> &quotes)
{
    QByteArray page(200, '.'); // no price in reach of a symbol that is missing
    for (const auto &[symbol, price] : quotes)
        page += "[" + symbol + "]$" + price + ";\n";
    return LoopbackServer::Page(page);
}

class CycleRun
{
public:
    /// What the screens are asked for, in order: "unload cycle", "login", "progress 1 to 2: Text".
    class Screens : public PriceCycleScreens
    {
    public:
        explicit Screens(CycleRun &run) : m_run(run) {}
        void UnloadCycle() override
        {
            log << QStringLiteral("unload cycle");
            m_run.Unload();
        }
        bool ProgramClosing() const override { return closing; }
        bool PostingInProgress() const override { return posting; }
        bool RebuildRunning() const override { return false; }
        bool TrackerReady() const override { return ready; }
        void ReloadDataGrid() override { log << QStringLiteral("reload"); }
        void ShowWebLogin() override
        {
            log << QStringLiteral("login");
            if (OnLogin)
                OnLogin();
            else
                m_run.state.LoginCancelled = true;
        }
        void ShowNewVersion() override { log << QStringLiteral("new version"); }
        void UnloadTips() override { log << QStringLiteral("unload tips"); }
        void RefreshHistoricalPriceList() override { log << QStringLiteral("refresh prices"); }
        void ShowProgress(const QString &text, int first, int last) override
        {
            log << QStringLiteral("progress %1 to %2: %3").arg(first).arg(last).arg(text);
        }
        void MoveProgress(int) override {}
        void UnloadProgress() override {}

        QStringList log;
        bool closing = false;
        bool posting = false;
        bool ready = true;
        std::function<void()> OnLogin; ///< fills the login in, or cancels

    private:
        CycleRun &m_run;
    };

    CycleRun() : screens(std::make_shared<Screens>(*this))
    {
        settings.CurrentFilePath = folder.SampleAccount();
        settings.AccountName = QStringLiteral("Sample Portfolio");
        settings.ShowReminderScreen = 0; // no check for a new version
        settings.AccessType = 3;
        account.LastPriceUpdate = clock.Today();
        account.CurrentWebSiteName = QStringLiteral("Quotes");
        account.WebUpdateMinutes = Integer::FromWide(5);
        folder.Execute(folder.SampleAccount(),
                       QStringLiteral("INSERT INTO DescriptiveTable VALUES ('Balance', 0, 0, 0, "
                                      "'2026-03-02', '2026-02-27', '6018', 1, 'n/a', 'n/a', 0, 0, "
                                      "'0')"));
    }
    ~CycleRun()
    {
        m_cycle.reset();
        rows.Close();
        CloseDatabases(databases);
    }

    // Before the first cycle.

    /// A site on the server at `path`, which is asked "path?s=A,B"; `columns` sets further columns
    /// ("UpdateCount = 1, SimilarSite = 7").
    CycleRun &Site(const QString &name, const QString &path, const QString &columns = {})
    {
        const QString webSites = folder.File("WebSites.mdb");
        folder.Execute(webSites,
                       QStringLiteral("INSERT INTO WebParameters (WebSiteName, BegWebAddress, "
                                      "EndWebAddress, AddressBuildCharacters, SymbolBegText, "
                                      "SymbolEndText, CharToPrice, PriceBegText, PriceEndText, "
                                      "DelayTime, UpdateCount, SignUpURL, OptionPrefix, "
                                      "OptionSuffix, SimilarSite) VALUES ('%1', '%2', '', ',', "
                                      "'[', ']', 60, '$', ';', 5, 20, '', 'None', '', 1)")
                           .arg(name, server.Address(path + QStringLiteral("?s="))));
        if (!columns.isEmpty())
            folder.Execute(webSites,
                           QStringLiteral("UPDATE WebParameters SET %1 WHERE WebSiteName = '%2'")
                               .arg(columns, name));
        return *this;
    }
    CycleRun &Position(const QString &symbol, double shares, double price,
                       const QString &type = QStringLiteral("Stock"))
    {
        QString quoted = symbol;
        quoted.replace(QLatin1Char('\''), QStringLiteral("''"));
        folder.Execute(folder.SampleAccount(),
                       QStringLiteral("INSERT INTO DailyTracker (Symbol, Name, Shares, CurrPrice, "
                                      "TransDate, Time) VALUES ('%1', '%1', %2, %3, '2026-02-27', "
                                      "'16:00:00.000')")
                           .arg(quoted)
                           .arg(shares)
                           .arg(qint64(price * 10000)));
        folder.Execute(folder.File("ApplControl.xxx"),
                       QStringLiteral("INSERT INTO SecurityDetail VALUES ('%1', '%1', '%2')")
                           .arg(quoted, type));
        return *this;
    }

    // The run.

    void Load()
    {
        if (!rows.IsOpen()) {
            OpenDatabases(databases, settings, account, services);
            rows.Open(databases.gConnAccount, QStringLiteral("ORDER BY Symbol"));
        }
        m_cycle = std::make_shared<PriceCycle>(PriceCycleWork{
            databases, settings, account, rows, state, services, practiceServer, webAddresses,
            screens, QStringLiteral("Internet Transfer Editor"), requestTimeout});
        m_cycle->Load();
    }
    void Unload()
    {
        if (m_cycle)
            m_cycle->Unload();
        m_cycle.reset();
    }
    void FirstCycle()
    {
        Load();
        Advance(5);
    }
    void Advance(int seconds) { clock.Advance(std::chrono::seconds(seconds)); }
    /// The ticks of one more interval.
    void NextCycle() { Advance(65 * account.WebUpdateMinutes.Value()); }

    // What came of it.

    bool IsOn() const { return bool(m_cycle); }
    std::string PriceOf(const QString &symbol) const
    {
        return folder
            .Value(folder.SampleAccount(),
                   QStringLiteral("SELECT printf('%d.%04d', CurrPrice / 10000, CurrPrice % 10000) "
                                  "FROM DailyTracker WHERE Symbol = '%1'")
                       .arg(symbol))
            .toStdString();
    }
    std::string TimeOf(const QString &symbol) const
    {
        return folder
            .Value(folder.SampleAccount(),
                   QStringLiteral("SELECT Time FROM DailyTracker WHERE Symbol = '%1'").arg(symbol))
            .toStdString();
    }
    /// A column of a site as it is stored now.
    std::string SiteColumn(const QString &name, const QString &column) const
    {
        return folder
            .Value(folder.File("WebSites.mdb"),
                   QStringLiteral("SELECT %1 FROM WebParameters WHERE WebSiteName = '%2'")
                       .arg(column, name))
            .toStdString();
    }
    /// "48|text" of each box since the last call.
    std::vector<std::string> TakeBoxes()
    {
        std::vector<std::string> texts;
        for (const ScriptedBoxes::ShownBox &box : boxes.boxes) {
            EXPECT_EQ(box.title, QStringLiteral("Internet Transfer Editor"));
            texts.push_back(std::to_string(box.buttonsValue) + "|" + box.text.toStdString());
        }
        boxes.boxes.clear();
        return texts;
    }
    QStringList TakeStatus() { return std::exchange(m_status.texts, {}); }
    QString Status() const { return m_status.texts.isEmpty() ? QString() : m_status.texts.last(); }

    TestAppFolder folder;
    LoopbackServer server;
    SimulatedClock clock{QDateTime(QDate(2026, 3, 2), QTime(10, 15))};
    ScriptedBoxes boxes;
    CommandStates commands;
    Settings settings;
    AccountState account;
    PriceUpdateState state;
    Databases databases;
    TrackerRecordset rows;
    PracticeServer practiceServer{clock};
    WebAddresses webAddresses;
    std::shared_ptr<Screens> screens;
    std::chrono::milliseconds requestTimeout{60000};
    std::function<void()> OnStatus; ///< called behind each status text

private:
    struct RecordedStatus : StatusLine
    {
        explicit RecordedStatus(CycleRun &run) : m_run(run) {}
        void Post(const QString &text) override
        {
            texts << text;
            if (m_run.OnStatus)
                m_run.OnStatus();
        }
        QStringList texts;

    private:
        CycleRun &m_run;
    };
    struct ThrowingEnd : Lifetime
    {
        [[noreturn]] void End() override { throw ProgramEnded(); }
    };

    RecordedStatus m_status{*this};
    ThrowingEnd m_lifetime;
    SettingsStore m_settingsStore{folder.SettingsFile()};
    const Formats m_formats{QLocale(QLocale::English, QLocale::UnitedStates)};
    std::shared_ptr<PriceCycle> m_cycle;

public:
    Services services{clock,      boxes,           m_status,  commands,
                      m_lifetime, m_settingsStore, m_formats, folder.Path()};
};
