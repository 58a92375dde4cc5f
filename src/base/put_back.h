#pragma once

/// Values that go back to what they were unless the action that changes them is kept.
///
///     PutBack before(rows, totals, balance);
///     ...                                      changes them, and writes the file
///     guard.Commit();                          throws: the three are as they were
///     before.Keep();
///
/// Memory then agrees with the file, whose transaction was rolled back. Costs a copy of each value.

#include <tuple>
#include <utility>

template <class... Values>
class PutBack
{
public:
    /// The values must outlive the object.
    explicit PutBack(Values &...values) : m_values(values...), m_before(values...) {}
    ~PutBack()
    {
        if (!m_isKept)
            m_values = std::move(m_before);
    }
    PutBack(const PutBack &) = delete;
    PutBack &operator=(const PutBack &) = delete;

    void Keep() { m_isKept = true; }

private:
    std::tuple<Values &...> m_values;
    std::tuple<Values...> m_before;
    bool m_isKept = false;
};
