// What the service manager (systemd) is told of the program: that it has started, what it does, that it ends.
// The protocol is a line of text to a socket that the environment names, so it needs no library. Without such
// a socket nothing happens.
#pragma once

#include <QString>

namespace servicemanager {

void Ready();
void Stopping();

/// One line for people, which 'systemctl status' shows. The same line again is not sent.
void SetStatus(const QString& text);

} // namespace servicemanager
