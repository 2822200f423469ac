// SPDX-License-Identifier: MIT
#include "casekey.h"

bool equalWithoutCase(const QString &a, const QString &b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

QString caseKey(const QString &text)
{
    // Character by character, as the comparison does it; QString::toCaseFolded goes further and takes a
    // sharp s for two plain ones.
    QString key(text.size(), Qt::Uninitialized);
    qsizetype at = 0;
    while (at < text.size()) {
        if (at + 1 < text.size() && text[at].isHighSurrogate() && text[at + 1].isLowSurrogate()) {
            const char32_t folded = QChar::toCaseFolded(QChar::surrogateToUcs4(text[at], text[at + 1]));
            key[at] = QChar(QChar::highSurrogate(folded));
            key[at + 1] = QChar(QChar::lowSurrogate(folded));
            at += 2;
        } else {
            key[at] = text[at].toCaseFolded();
            ++at;
        }
    }
    return key;
}
