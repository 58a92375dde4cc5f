#pragma once

/// The end of the program from inside a routine, after an error that leaves no way on.

#include <exception>

/// Thrown by End where the process goes on without the program (driver, tests). Not a RuntimeError,
/// so that no handler of an action takes it for a failure of that action.
class ProgramEnded : public std::exception
{
public:
    const char *what() const noexcept override { return "the program has ended"; }
};

class Lifetime
{
public:
    virtual ~Lifetime() = default;
    /// Closes the databases as they are, saves nothing, asks nothing, and does not return.
    [[noreturn]] virtual void End() = 0;
};
