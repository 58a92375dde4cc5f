#pragma once

/// A download of daily prices on a real price file, with every screen played by the test. It is
/// Monday 2026-03-02, 10:15, and two months are kept.

#include "historical_market.h"

#include "marketdata/historical.h"
#include "marketdata/historical_rows.h"
#include "support/print_qt.h"
#include "support/test_app_folder.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

class HistoricalRun : public testing::Test
{
protected:
    struct RecordedScreens : PriceCycleScreens
    {
        void UnloadCycle() override { calls.push_back("unload cycle"); }
        bool ProgramClosing() const override { return false; }
        bool PostingInProgress() const override { return false; }
        bool RebuildRunning() const override { return false; }
        bool TrackerReady() const override { return true; }
        void ReloadDataGrid() override {}
        void ShowWebLogin() override {}
        void ShowNewVersion() override {}
        void UnloadTips() override {}
        void RefreshHistoricalPriceList() override { calls.push_back("refresh list"); }
        void ShowProgress(const QString &text, int first, int last) override
        {
            calls.push_back("show " + text.toStdString() + " " + std::to_string(first) + " to " +
                            std::to_string(last));
        }
        void MoveProgress(int value) override { calls.push_back("move " + std::to_string(value)); }
        void UnloadProgress() override { calls.push_back("unload progress"); }

        std::vector<std::string> calls;
    };
    /// Keeps all texts, for those that a next one covers at once.
    struct RecordedTexts : StatusLine
    {
        void Post(const QString &text) override { texts.push_back(text.toStdString()); }
        std::vector<std::string> texts;
    };

    HistoricalRun()
    {
        QFile::copy(folder.File(QStringLiteral("HistPrices.xxx")), PricePath());
        gConnHistPrices.Open(PricePath());
    }

    QString PricePath() const { return folder.File(QStringLiteral("HistPrices.mdb")); }
    QDate Today() { return machine.clock.Today(); }

    void Download(const QStringList &symbols)
    {
        PortfolioArray entries;
        for (const QString &symbol : symbols) {
            entries.emplace_back();
            entries.back().Symbol = TenCharacters(symbol);
        }
        Services services{machine.clock,
                          machine.dialogs,
                          status,
                          machine.commands,
                          machine.services.lifetime,
                          machine.services.settingsStore,
                          machine.services.formats,
                          QString()};
        HistoricalWork work{gConnHistPrices, settings,
                            account,         state,
                            services,        inet,
                            screens,         source ? *source : market,
                            StopRequested,   QStringLiteral("Internet Transfer Editor")};
        GetHistoricalPrices(work, entries);
    }

    /// A day that is in the table before the download.
    void Stored(const QString &symbol, QDate day, const char *close = "50")
    {
        HistPrice price;
        price.Symbol = symbol;
        price.PriceDate = day;
        price.PriceOpen = price.DayHigh = price.DayLow = price.PriceClose = price.AdjClose =
            Currency(close);
        InsertHistoricalPrice(gConnHistPrices, price, machine.services);
    }
    std::string Value(const char *sql, const QString &symbol)
    {
        Statement statement = gConnHistPrices.Prepare(QString::fromUtf8(sql));
        statement.BindAll(symbol);
        return statement.Step() ? statement.Text(0).toStdString() : "(none)";
    }
    int RowCount(const QString &symbol)
    {
        return std::stoi(Value("SELECT count(*) FROM HistoricalPrices WHERE Symbol = ?", symbol));
    }
    std::string Oldest(const QString &symbol)
    {
        return OldestPriceDate(gConnHistPrices, symbol).toString(Qt::ISODate).toStdString();
    }
    std::string Newest(const QString &symbol)
    {
        return NewestPriceDate(gConnHistPrices, symbol).toString(Qt::ISODate).toStdString();
    }
    bool WasPosted(const std::string &text) const
    {
        return std::find(status.texts.begin(), status.texts.end(), text) != status.texts.end();
    }

    TestAppFolder folder;
    TestServices machine;
    RecordedTexts status;
    Connection gConnHistPrices;
    Settings settings;
    AccountState account;
    PriceUpdateState state;
    Inet inet{machine.clock};
    RecordedScreens screens;
    HistoricalMarket market;
    std::unique_ptr<HistoricalSource> source; ///< in place of the market
    bool StopRequested = false;
};
