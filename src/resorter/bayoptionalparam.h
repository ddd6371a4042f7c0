// What the ini file says about a bay beside its name.
#pragma once

#include <QString>

class BayOptionalParam
{
public:
    quint32 Number = 0;  // N of the key BAYN
    QString BayName;     // the circuit of the bay's channels
    QString DisplayName; // shown in place of BayName
    QString CircuitName; // a second circuit name under which the bay's channels may stand in a recording
};
