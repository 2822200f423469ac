// SPDX-License-Identifier: MIT
#include "inputkey.h"

using namespace Qt::StringLiterals;

bool parseInputKey(const QString &text, bool *isJoy, int *index)
{
    constexpr auto axis = "joy_"_L1;
    constexpr auto button = "but_"_L1;
    const QString key = text.trimmed().toLower();
    *isJoy = !key.startsWith(button);
    *index = -1;
    if (*isJoy && !key.startsWith(axis))
        return false;

    bool parsed = false;
    const int number = QStringView(key).sliced(axis.size()).toInt(&parsed, 10);
    if (parsed)
        *index = number;
    return parsed;
}

QString inputKey(bool isJoy, int index)
{
    return u"%1_%2"_s.arg(isJoy ? "joy"_L1 : "but"_L1).arg(index);
}
