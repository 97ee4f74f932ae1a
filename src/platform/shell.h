// Opening a file with the program the desktop associates with it, and the
// runtime's random numbers, each through one function a test can replace.
#pragma once

#include <QString>
#include <functional>

namespace lorvane::platform {

// Opens `path` with the desktop's default application. Gives false when the
// desktop has no program for the file's type or could not start it.
bool ShellOpen(const QString& path);
// Replaces the opener (a test records the path and says whether it opened).
void setShellOpener(std::function<bool(const QString&)> opener);

// Seeds the random numbers from the clock.
void Randomize();
// A random number from 0 up to, but not including, 1.
double Rnd();
// Replaces the random numbers (a test gives fixed ones); empty puts them back.
void setRandomSource(std::function<double()> source);

}  // namespace lorvane::platform
