// The application object that Qt needs.
#pragma once

#include <QCoreApplication>

#include <memory>

/// Makes it. With `paints` it can paint pictures: without a screen, a session or a desktop, whatever the
/// environment says about them. It gets only the program's name from the arguments.
std::unique_ptr<QCoreApplication> MakeApplication(char** arguments, bool paints);
