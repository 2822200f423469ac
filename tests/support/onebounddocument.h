// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>

/// The mapping file, byte for byte, of a profile in which button 3 runs the action "A": its one step calls
/// the host's function "F" with the parameter "speed", which is 5, where the condition "W" holds.
inline QByteArray oneBoundDocument()
{
    return R"({
    "bridges": [
        {
            "action": "A",
            "args": {
                "speed": 5
            },
            "dst": [
                {
                    "args": {
                        "p": 5
                    },
                    "ref": "F",
                    "when": "W"
                }
            ],
            "src": {
                "deviceId": 0,
                "deviceType": "gamepade",
                "packetId": 1,
                "stringKey": "but_3"
            }
        }
    ],
    "onClose": [
    ],
    "onStartup": [
    ],
    "ref": [
    ],
    "signals": [
    ],
    "timers": [
    ]
}
)";
}
