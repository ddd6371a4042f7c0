// The library that reads and writes MAT files, loaded when it is first needed.
//
// With HDF5 and all that HDF5 needs, it takes longer to load than the rest of the program to start and
// finish, and few runs have to do with MAT files.
#pragma once

#include <matio.h>

namespace forms {

/// The functions of matio that are used, under their names without "Mat_".
struct MatLibrary
{
    decltype(&::Mat_Close) Close;
    decltype(&::Mat_CreateVer) CreateVer;
    decltype(&::Mat_Open) Open;
    decltype(&::Mat_VarCreate) VarCreate;
    decltype(&::Mat_VarCreateStruct) VarCreateStruct;
    decltype(&::Mat_VarFree) VarFree;
    decltype(&::Mat_VarGetNumberOfFields) VarGetNumberOfFields;
    decltype(&::Mat_VarGetStructFieldByIndex) VarGetStructFieldByIndex;
    decltype(&::Mat_VarGetStructFieldnames) VarGetStructFieldnames;
    decltype(&::Mat_VarRead) VarRead;
    decltype(&::Mat_VarReadDataLinear) VarReadDataLinear;
    decltype(&::Mat_VarReadInfo) VarReadInfo;
    decltype(&::Mat_VarSetStructFieldByName) VarSetStructFieldByName;
    decltype(&::Mat_VarWrite) VarWrite;
};

/// The library, for the rest of the process. Throws FormError if it is not installed.
const MatLibrary& Matio();

} // namespace forms
