// SPDX-License-Identifier: MIT
#pragma once

#include "dialogs.h"
#include "editorstage.h"
#include "exchangefiles.h"
#include "testmain.h"

#include <optional>

/// The base of tests of the editor's operations on files: Qt's own dialogs, and for each test an empty home
/// and no gamepads.
class EditorFilesTest : public QObject
{
    Q_OBJECT

protected:
    stage::Pads &pads() { return *m_pads; }

    /// Writes a picture of 40 by 30 pixels, all red, and returns its path.
    static QString picture(const QString &name = QStringLiteral("photo.png"))
    {
        QString path = temporaryHome() + QStringLiteral("/data/") + name;
        write(path, pngOf({40, 30}, Qt::red));
        return path;
    }

protected Q_SLOTS:
    void initTestCase() { QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }
    void init()
    {
        stage::startAfresh();
        m_pads.emplace(); // an editor would make a manager that outlives the test
    }
    void cleanup() { m_pads.reset(); }

private:
    std::optional<stage::Pads> m_pads;
};
