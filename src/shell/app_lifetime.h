#pragma once

/// The end of the process for the application itself: at once, with no further clean-up.

#include "platform/lifetime.h"

#include <cstdlib>

class ProcessLifetime : public Lifetime
{
public:
    [[noreturn]] void End() override { std::_Exit(EXIT_SUCCESS); }
};
