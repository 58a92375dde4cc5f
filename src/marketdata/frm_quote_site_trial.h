#pragma once

/// Tries a quote site out: asks for a symbol, fetches the page as the price cycle does, and shows
/// what came back, where symbol and price were found in it, and the price taken, or what was not
/// found.
///
/// The site is the row on which gRsWebParameters stands when the screen loads; the practice site is
/// served. Nothing is stored. Whoever shows it sees to it that no cycle runs meanwhile.

#include "marketdata/quote_site_trial.h"
#include "program/form.h"

class QLabel;
class QLineEdit;
class QPlainTextEdit;

class frmQuoteSiteTrial : public Form
{
public:
    explicit frmQuoteSiteTrial(Program &program);

    void Load() override;
    /// A transfer that is under way is ended first; the screen goes when it has come back.
    bool QueryUnload() override;

protected:
    void showEvent(QShowEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void BuildControls();
    void BuildReply();
    void cmdTest_Click();
    std::pair<QString, QString> SymbolsToAskFor() const;
    QString Fetch(const QString &address);
    bool HasLogin() const;
    QString FetchWithLogin(const QString &address);
    /// The page with what was found in it.
    void ShowPage(const QString &page, const std::vector<PageMark> &marks);
    void ShowMarks();

    QLabel *lblSite = nullptr;
    QLineEdit *txtSymbol = nullptr;
    QLineEdit *txtPrice = nullptr; ///< empty: none was taken
    QPlainTextEdit *txtAddress = nullptr;
    QPlainTextEdit *txtFindings = nullptr;
    QPlainTextEdit *txtReply = nullptr;
    QLabel *lblLegend = nullptr;
    QLabel *lblMore = nullptr;
    QPushButton *cmdTest = nullptr;
    QPushButton *cmdClose = nullptr;
    QPushButton *cmdHelp = nullptr;

    Inet m_inet;
    QuoteSite m_site;
    QString m_transfer; ///< the outcome of the transfer, in words
    std::vector<PageMark> m_marks;
    bool m_isFetching = false;
    bool m_closesAfterFetch = false;
};
