// The application object that Qt wants.
#pragma once

#include <QCoreApplication>

#include <memory>

/// Makes it. With `paints` it can paint pictures: without a screen, a session or a desktop, whatever the
/// environment says of them. Of the arguments it takes the program's name alone.
std::unique_ptr<QCoreApplication> MakeApplication(char** arguments, bool paints);
