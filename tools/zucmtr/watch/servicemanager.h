// Reports the state of the program to the service manager (systemd): that it has started, what it is doing,
// that it is ending. The protocol is a line of text to a socket that the environment names, so it needs no
// library. Without such a socket nothing happens.
#pragma once

#include <QString>

namespace servicemanager {

void Ready();
void Stopping();

/// One line for people, which 'systemctl status' shows. The same line is not sent twice in a row.
void SetStatus(const QString& text);

} // namespace servicemanager
