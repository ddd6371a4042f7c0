// What the ini file says about a bay besides its name.
#pragma once

#include <QString>

class BayOptionalParam
{
public:
    quint32 Number = 0;  // N of the key BAYN
    QString BayName;     // the circuit of the bay's channels
    QString DisplayName; // shown in place of BayName
    QString CircuitName; // a second circuit name that the bay's channels may have in a recording
};
