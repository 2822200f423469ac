// SPDX-License-Identifier: MIT
#include "icominterfacemodelprovider.h"

void registerContractTypes()
{
    qRegisterMetaType<IComInterface *>("IComInterface*");
    qRegisterMetaType<QList<IComInterface *>>("QList<IComInterface*>");
    qRegisterMetaType<IComInterface::DeviceType>("IComInterface::DeviceType");
    qRegisterMetaType<IComInterface::ComStatus>("IComInterface::ComStatus");
}
