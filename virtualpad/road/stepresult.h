// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

/// What came of one step.
struct StepResult
{
    bool happened = false;
    QString words; ///< what the host received; or, when the step did not happen, what was waited for
};

[[nodiscard]] inline StepResult happened(const QString &words)
{
    return {.happened = true, .words = words};
}

[[nodiscard]] inline StepResult missed(const QString &words)
{
    return {.happened = false, .words = words};
}
