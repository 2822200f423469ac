// SPDX-License-Identifier: MIT
#include "sfmlslot.h"

#include <string_view>

sf::Joystick::Identification SfmlSlot::identification() const
{
    if (m_exists)
        return sf::Joystick::getIdentification(m_slot);
    // SFML's own default carries a name of its own.
    sf::Joystick::Identification nobody;
    nobody.name = {};
    return nobody;
}

QString textOf(const sf::String &text)
{
    const auto utf8 = text.toUtf8();
    return QString::fromUtf8(reinterpret_cast<const char *>(utf8.data()),
                             static_cast<qsizetype>(utf8.size()));
}

bool readsAs(const sf::String &text, QStringView known)
{
    const char16_t *unit = known.utf16();
    const char16_t *const end = unit + known.size();
    for (const char32_t codePoint : std::u32string_view(text.getData(), text.getSize())) {
        if (unit == end)
            return false;
        if (*unit == codePoint) {
            ++unit;
            continue;
        }
        if (!QChar::requiresSurrogates(codePoint) || end - unit < 2 ||
            unit[0] != QChar::highSurrogate(codePoint) || unit[1] != QChar::lowSurrogate(codePoint))
            return false;
        unit += 2;
    }
    return unit == end;
}
