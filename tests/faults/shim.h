// A shim between the program and the C library's file calls: makes the n-th call of some kinds below a
// directory fail, or does something else first.
#pragma once

namespace shim {

enum Kind : unsigned {
    Open = 1,
    Read = 2,
    Write = 4,
    Rename = 8,
    Unlink = 16,
    Close = 32,
    Sync = 64,
    All = 127,
    MakeDirectory = 128 // a temporary one; not among All
};

struct Plan
{
    unsigned kinds = All;       // which calls are counted
    long nth = 0;               // the call, from 1, at which it happens; 0: only count
    int error = 0;              // errno of the failure; 0: the call goes through
    bool onwards = false;       // all later calls fail, too
    bool skipSync = false;      // syncs that go through do nothing, which saves their time
    bool shortCount = false;    // a read or write takes half of what it should
    void (*action)() = nullptr; // called before the call proceeds
};

/// Counts calls on files below directory from here on and carries out the plan. One plan at a time.
void Arm(const char* directory, const Plan& plan);

/// Stops; returns how many calls were counted.
long Disarm();

/// Path (or that of the file descriptor) of the call at which it happened; empty if it did not.
const char* Struck();

/// Kind of that call.
Kind StruckKind();

} // namespace shim
