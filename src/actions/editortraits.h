// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QStringView>

/// What is settled differently for the two editors of a function call; everything else they share.
struct EditorTraits
{
    QStringView firstEntry;    ///< text of the combo entry that stands for no function
    bool keepsNamelessParams;  ///< or drops them when the catalogue is read
    QStringView rowLabel;      ///< format of a row's label: %1 the name
    QStringView rowLabelName;  ///< object name of a row's label
    QStringView noDefault;     ///< placeholder of a field without a default text
    QStringView defaultPiece;  ///< format of a parameter in a signature: %1 type, %2 name, %3 default
    bool quotesStringDefaults; ///< in the signature
    bool marksNoParams;        ///< a signature without parameters ends in "()"

    bool operator==(const EditorTraits &) const = default;
};

inline constexpr EditorTraits toolBoxTraits{
    .firstEntry = u"",
    .keepsNamelessParams = true,
    .rowLabel = u"%1:",
    .rowLabelName = u"",
    .noDefault = u"<par défaut>",
    .defaultPiece = u"%1 %2 = %3",
    .quotesStringDefaults = true,
    .marksNoParams = false,
};

inline constexpr EditorTraits taskBlockTraits{
    .firstEntry = u"Choisir une action",
    .keepsNamelessParams = false,
    .rowLabel = u"%1",
    .rowLabelName = u"paramTag",
    .noDefault = u"<defaut>",
    .defaultPiece = u"%1 %2=%3",
    .quotesStringDefaults = false,
    .marksNoParams = true,
};
