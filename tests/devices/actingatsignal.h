// SPDX-License-Identifier: MIT
#pragma once

#include "linkerdevicemodel.h"

#include <functional>
#include <utility>

/// Hears every signal of a model and acts once: inside the signal of that number, counted from 0. Signals
/// that come while it acts are not counted.
///
/// `rowsAboutToBeInserted` and `rowsAboutToBeRemoved` are left out: Qt's own model class goes on after them.
class ActingAtSignal : public QObject
{
    Q_OBJECT

public:
    ActingAtSignal(LinkerDeviceModel *model, int number, std::function<void()> act)
        : m_number(number)
        , m_act(std::move(act))
    {
        using Model = LinkerDeviceModel;
        connect(model, &Model::uniqSelectionChanged, this, &ActingAtSignal::hear);
        connect(model, &Model::autoDetectChanged, this, &ActingAtSignal::hear);
        connect(model, &Model::previousCountChanged, this, &ActingAtSignal::hear);
        connect(model, &Model::contextChanged, this, &ActingAtSignal::hear);
        connect(model, &Model::countChanged, this, &ActingAtSignal::hear);
        connect(model, &Model::selectedInterfacesChanged, this, &ActingAtSignal::hear);
        connect(model, &Model::dataChanged, this, &ActingAtSignal::hear);
        connect(model, &Model::rowsInserted, this, &ActingAtSignal::hear);
        connect(model, &Model::rowsRemoved, this, &ActingAtSignal::hear);
        connect(model, &Model::modelAboutToBeReset, this, &ActingAtSignal::hear);
        connect(model, &Model::modelReset, this, &ActingAtSignal::hear);
    }

    [[nodiscard]] bool hasActed() const { return m_heard > m_number; }

private:
    void hear()
    {
        if (m_acting || m_heard++ != m_number)
            return;
        m_acting = true;
        m_act();
        m_acting = false;
    }

    const int m_number;
    const std::function<void()> m_act;
    int m_heard = 0;
    bool m_acting = false;
};
