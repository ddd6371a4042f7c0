// Work in a process of its own, which may change its user and its file systems.
#pragma once

#include <QString>

#include <functional>

/// What the work returns, or the message of the error that it ends with.
QString InAProcess(const std::function<QString()>& work);

/// The superuser becomes the user nobody, for good; other users stay who they are.
void BecomeNobody();
