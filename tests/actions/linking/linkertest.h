// SPDX-License-Identifier: MIT
#pragma once

#include "linkerstage.h"

#include <memory>

/// The base of tests of the linker: each has a stage of its own.
class LinkerTest : public QObject
{
    Q_OBJECT

protected:
    LinkerStage &stage() { return *m_stage; }

protected Q_SLOTS:
    void init()
    {
        failOnUnexpectedWarnings();
        m_stage = std::make_unique<LinkerStage>();
        QVERIFY(m_stage->exposed());
    }
    void cleanup() { m_stage.reset(); }

private:
    std::unique_ptr<LinkerStage> m_stage;
};
