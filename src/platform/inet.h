#pragma once

/// The transfer control: fetches the text of a page.
///
///     Inet inet(clock);
///     inet.AccessType = Inet::Direct;
///     const QString page = inet.OpenURL("http://127.0.0.1:8917/quotes?s=A");
///     if (page.isEmpty() && inet.ResponseCode() == Inet::NameNotResolved) ...
///
/// An address comes as it reads, with nothing escaped: blanks, accents, "^", "|" and "#" are escaped
/// here; what is escaped already stays. Without a scheme it is taken as http; other schemes than http
/// and https are AddressInvalid.
///
/// OpenURL waits, with events handled, until the page is there, the transfer failed, or
/// RequestTimeout has passed: then it throws RuntimeError 35761, and also when the machine's own
/// attempt to connect times out. A failed transfer gives the empty
/// text, also where a part of the page had come; so does one that was cancelled. The body of a
/// reply is handed back whatever its HTTP status. Certificates are verified, redirects followed
/// (never from https to http), compression undone; the text is UTF-8 unless the reply says
/// otherwise. No more than MaximumPageBytes are read; the rest of a longer page is left out.
///
/// States posted to StateChanged: 1 looking up the address, 2 address found, 3 connecting,
/// 4 connected, 5 sending the request, 6 request sent, 7 receiving, 8 received, 9 disconnecting,
/// 10 disconnected, 11 error (ResponseCode says which), 12 completed. A time-out posts no error
/// state: the caller has the exception.

#include "platform/clock.h"

#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

class Inet
{
public:
    enum Access
    {
        SystemDefault = 0, ///< as the system's settings say
        Direct = 1,
        NamedProxy = 2 ///< the proxy that the environment names; without one, direct
    };
    /// Codes of failures, as the callers tell them apart. The machine is not on line: 0 (nothing
    /// was asked, or the reply was empty) and 12007.
    enum Codes
    {
        TimedOut = 12002,
        AddressInvalid = 12005,
        NameNotResolved = 12007,
        Cancelled = 12017,
        CannotConnect = 12029,
        ConnectionReset = 12031, ///< also when the reply ended before its length
        InvalidReply = 12152,
        RedirectFailed = 12156,
        SecurityFailed = 12157 ///< the certificate or the handshake
    };
    static constexpr int TimeOutError = 35761;
    static constexpr int StillExecutingError = 35764; ///< asked for a page while one is under way
    static constexpr qint64 MaximumPageBytes = 4 * 1024 * 1024;

    explicit Inet(Clock &clock);
    ~Inet();
    Inet(const Inet &) = delete;
    Inet &operator=(const Inet &) = delete;

    int AccessType = SystemDefault;
    QString URL;
    QString UserName;
    QString Password;
    std::chrono::milliseconds RequestTimeout{60000}; ///< of a whole page, in real time
    std::function<void(int state)> StateChanged;

    /// No login is sent, whatever UserName says.
    QString OpenURL(const QString &address);
    /// Fetches URL with UserName and Password, which are given when the server asks for them: that of
    /// the same scheme, host and port alone, not one that it points to.
    QString OpenURL();
    /// "QUIT" closes the connections that are kept open; other operations throw RuntimeError 5.
    void Execute(const QString &operation);
    /// Ends the transfer that is under way; its OpenURL comes back with the empty text.
    void Cancel();
    bool StillExecuting() const;

    /// Of the last transfer: 0 when a page came, one of Codes, or the HTTP status (400 and above)
    /// when an error reply came without a body.
    int ResponseCode() const;
    /// What ResponseCode says, in words; empty with code 0.
    QString ResponseInfo() const;

    /// Of the last transfer: the HTTP status of the reply; 0 when none came.
    int HttpStatus() const;
    /// False when the last page has no mark of its end that can be relied on: then the connection may
    /// have been cut, and the end of the page be missing.
    bool EndIsCertain() const;
    /// How long the last reply asks to be left alone: one of status 429 or 503 with Retry-After.
    std::optional<std::chrono::seconds> RetryAfter() const;

private:
    class Transfer;
    std::unique_ptr<Transfer> m_transfer;
};
