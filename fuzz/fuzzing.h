// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QJsonDocument>

#include <cstddef>
#include <cstdint>

/// What the fuzzer gives to each call.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

/// Reads an input as JSON; a null document where it is none.
[[nodiscard]] QJsonDocument jsonOf(const uint8_t *data, size_t size);

/// Ends the process unless `holds`: the input at hand is a finding, and `what` says why.
void mustHold(bool holds, const char *what);

/// Delivers what is posted and lets go what waits for its deferred deletion, so that nothing piles up from
/// one input to the next.
void settle();
