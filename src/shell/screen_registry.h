#pragma once

/// The one place that knows which screens the program has.

class ScreenHost;

void RegisterScreens(ScreenHost &host);
