// SPDX-License-Identifier: MIT
#include "sfmlslot.h"

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
    qsizetype at = 0;
    for (const char32_t codePoint : text) {
        for (const char16_t unit : QChar::fromUcs4(codePoint)) {
            if (at == known.size() || known[at] != unit)
                return false;
            ++at;
        }
    }
    return at == known.size();
}
