#pragma once

/// The program with a list screen that is opened and closed again and again, each until its window is
/// painted, for the benchmarks of the lists.

#include "program_folder.h"
#include "shell/application.h"

#include <benchmark/benchmark.h>

/// Steps through all rows of the statement and does nothing with them: the floor of a list.
inline void StepAllRows(benchmark::State &state, const QString &file, const QString &statement,
                        int wanted)
{
    Connection connection;
    connection.Open(file);
    for (auto _ : state) {
        Statement select = connection.Prepare(statement);
        int rows = 0;
        while (select.Step())
            ++rows;
        if (rows != wanted)
            state.SkipWithError("not all rows");
    }
}

/// An application folder of its own, without tips and price updates.
class ListFolder
{
public:
    ListFolder()
    {
        MakeFolder(DeliveredFolder(), m_folder.path(), 0);
        SettingsStore settings(m_folder.filePath(QStringLiteral("settings.ini")));
        for (const char *option : {"ShowTipOfDay", "WebPriceUpdate"})
            settings.SaveSetting(QStringLiteral("Options"), QString::fromUtf8(option),
                                 QStringLiteral("0"));
        settings.Flush();
    }
    QString Path() const { return m_folder.path(); }
    QString In(const char *name) const { return m_folder.filePath(QString::fromUtf8(name)); }
    QString Account() const { return In("Sample Portfolio.mdb"); }

private:
    QTemporaryDir m_folder;
};

/// Grid is DataGrid or FlexGrid.
template <class Grid>
class ListRun
{
public:
    explicit ListRun(const ListFolder &folder)
        : m_application(m_clock, m_dialogs, m_lifetime, folder.In("settings.ini"), folder.Path(),
                        QLocale(QLocale::English, QLocale::UnitedStates))
    {
        m_application.Launch();
        Settle();
    }

    void Open(const char *form)
    {
        m_application.State().selection.CurrentSymbol.clear(); // all symbols
        m_application.State().screens.Show(QString::fromUtf8(form));
        Settle();
    }
    void Close(const char *form)
    {
        m_application.State().screens.Unload(QString::fromUtf8(form));
        Settle();
    }
    Grid &GridOf(const char *form)
    {
        const Form *screen = m_application.State().screens.Find(QString::fromUtf8(form));
        for (QWidget *child : screen->findChildren<QWidget *>())
            if (auto *grid =
                    dynamic_cast<Grid *>(child)) // our widgets have no meta object of theirs
                return *grid;
        throw std::logic_error("no grid");
    }
    void Settle()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }

    void TimeOpening(benchmark::State &state, const char *form, int rows)
    {
        for (auto _ : state) {
            Open(form);
            state.PauseTiming();
            if (GridOf(form).RowCount() != rows)
                state.SkipWithError("not all rows");
            Close(form);
            state.ResumeTiming();
        }
    }
    void TimeScrollingToTheEnd(benchmark::State &state, const char *form)
    {
        Open(form);
        Grid &grid = GridOf(form);
        for (auto _ : state) {
            grid.SetCurrentRow(grid.RowCount() - 1);
            Settle();
            state.PauseTiming();
            grid.SetCurrentRow(0);
            Settle();
            state.ResumeTiming();
        }
        Close(form);
    }
    /// A click on the heading, in the one direction and the other.
    void TimeSorting(benchmark::State &state, const char *form, const char *caption)
    {
        Open(form);
        Grid &grid = GridOf(form);
        const int place = grid.ColumnByCaption(QString::fromUtf8(caption));
        for (auto _ : state) {
            grid.ClickHeader(place);
            Settle();
        }
        Close(form);
    }

private:
    SimulatedClock m_clock{QDateTime(QDate(2026, 3, 2), QTime(10, 15))};
    AgreeingDialogs m_dialogs;
    ThrowingLifetime m_lifetime;
    Application m_application;
};
