// SPDX-License-Identifier: MIT
#pragma once

class QFile;

/// Open a document where it can be read or written without waiting. A pipe with nobody at its other end would
/// hold the host for ever, and a device may have no end; both count as files that do not open. So does a file
/// without a name, about which Qt would print a warning, and to read, one of more than 512 MiB.
[[nodiscard]] bool openToRead(QFile &file);
/// Truncates. Unbuffered, since a buffered write that a full disk refuses would count as done.
[[nodiscard]] bool openToWrite(QFile &file);
