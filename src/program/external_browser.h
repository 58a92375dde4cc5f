#pragma once

/// Web pages outside the program: in the browser that the user has made the default.
///
///     OpenInternetExplorer(program, "http://www.lipper.example/");
///
/// The browser is the user's own. It tells nothing of what it does, so the status bar says that a
/// page is asked for and not what became of it, and the end of the program closes no browser:
/// BrowserAlive says that one has taken a page in this run.

#include "program/program.h"

/// Posts "Navigating to website..." and hands the address ("http://..." or "https://...") to
/// Services::openInBrowser. Sets BrowserAlive; when the address is no web page or no browser takes
/// it, clears BrowserAlive and shows a box with the address, which the user can go to by hand.
void OpenInternetExplorer(Program &program, const QString &address);
/// The same without the box; false when no browser took the page. For who says so in another way.
bool TryInternetExplorer(Program &program, const QString &address);
