// A small record to read and to damage.
#pragma once

#include "comtrade/record.h"
#include "support/files.h"

#include <functional>

/// A CFG of revision 2013 with two analog channels and one status channel, four samples, ASCII data.
inline QByteArray ExampleConfiguration()
{
    return "Подстанция,РАС,2013\n"
           "3,2A,1D\n"
           "1,Ia,A,Q1,A,0.5,-1,2.5,-32767,32767,1000,5,P\n"
           "2,Ub,B,Q2,kV,1e-3,0,0,-99999,99998,1,1,s\n"
           "1,Trip,,Q1,1\n"
           "50\n"
           "1\n"
           "2400,4\n"
           "31/01/2024,11:59:59.750000\n"
           "31/01/2024,12:00:00.25\n"
           "ASCII\n"
           "1\n"
           "+3h00,+3h00\n"
           "0,3\n";
}

/// The text of the error that the work throws; empty if it throws none.
inline QString ErrorOf(const std::function<void()>& work)
{
    try {
        work();
    } catch (const comtrade::Error& error) {
        return QString::fromUtf8(error.what());
    }
    return QString();
}
