#pragma once

/// What the price cycle asks of the screens around it. Implemented over the program by the form
/// that carries the cycle; a test plays all screens itself.

#include <QString>

class PriceCycleScreens
{
public:
    virtual ~PriceCycleScreens() = default;

    /// Unloads frmInternetTran: switches the price update off.
    virtual void UnloadCycle() = 0;
    virtual bool ProgramClosing() const = 0;
    /// The entry screen is open and posts right now.
    virtual bool PostingInProgress() const = 0;
    virtual bool RebuildRunning() const = 0;
    /// The Daily Tracker is loaded and has its rows; without them no cycle starts.
    virtual bool TrackerReady() const = 0;
    /// The Daily Tracker values its rows anew.
    virtual void ReloadDataGrid() = 0;

    /// Shows frmWebLogin and waits for it; PriceUpdateState::LoginCancelled tells how it was left.
    virtual void ShowWebLogin() = 0;
    /// Shows frmNewVersion and waits for it.
    virtual void ShowNewVersion() = 0;
    virtual void UnloadTips() = 0;
    /// The historical price list, if it is open, runs its query again, as by its OK button.
    virtual void RefreshHistoricalPriceList() = 0;

    /// frmProgressBar with this text, on a bar from `first` to `last`.
    virtual void ShowProgress(const QString &text, int first, int last) = 0;
    virtual void MoveProgress(int value) = 0;
    virtual void UnloadProgress() = 0;
};
