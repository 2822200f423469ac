// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

/// Counts the heap allocations of the whole process, `operator new` and `malloc` with its kin alike, from its
/// making on. A program that links this has its allocation functions replaced.
class AllocationCounter
{
public:
    AllocationCounter();

    [[nodiscard]] std::size_t count() const;

private:
    std::size_t m_atStart;
};
