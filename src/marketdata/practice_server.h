#pragma once

/// The practice quotes: a web server of this program on the loopback address, with simulated prices
/// (practice_walk.h) in the formats of quote sites. Every page says that they are simulated.
///
///     /quotes?s=A,B,ZZZZ      current prices; "N/A" for a symbol that the practice market lacks
///     /d?a=..&b=..&c=..&d=..&e=..&f=..&g=d&s=A      table of daily prices
///     /q?s=A&...              the day's chart, a drawn line
///     /marketmap/             map of the market
///     /version.xml            version file, naming the version that runs
///     /Downloads.html, /VersionChanges.html
///
/// Unknown to the practice market are: what is longer than ten characters or has others than
/// letters, digits, ".", "-", "^" and "="; and all that begins with "ZZ". Symbols are separated by
/// "," or "+". Another path has the status 404, another method than GET 405.
///
/// Bounds: 16 KB of head (32 KB are read), no body, 16 connections (the one that was silent longest makes
/// room); a Host header that names another machine has the status 403, since a web page in the user's
/// browser could have pointed that name here.
///
/// It needs the event loop to run while a page is fetched, and nothing else: no thread, no network.

#include "platform/clock.h"

#include <QString>

#include <memory>

class PracticeServer
{
public:
    explicit PracticeServer(Clock &clock);
    ~PracticeServer();
    PracticeServer(const PracticeServer &) = delete;
    PracticeServer &operator=(const PracticeServer &) = delete;

    /// Listens on 127.0.0.1 at `port`; when that is taken at one of the next few, else at any free
    /// one, as for 0. Does nothing when it listens already. Throws RuntimeError 5 when no port is to
    /// be had.
    void Listen(quint16 port);
    bool IsListening() const;
    quint16 Port() const; ///< 0 while it does not listen
    /// "http://127.0.0.1:8917"; begins to listen when it does not yet.
    QString Origin();

    static constexpr quint16 DeliveredPort = 8917;

private:
    class Pages;
    Clock &m_clock;
    std::unique_ptr<Pages> m_pages;
};
