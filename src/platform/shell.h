// Opening a file with the program the desktop associates with it, and the
// runtime's random numbers, each through one function a test can replace.
#pragma once

#include <QString>
#include <functional>

namespace lorvane::platform {

// Opens `path` with the desktop's default application; the result is not read.
void ShellOpen(const QString& path);
void setShellOpener(std::function<void(const QString&)> opener);

// Seeds the random numbers from the clock.
void Randomize();
// A random number from 0 up to, but not including, 1.
double Rnd();
// Replaces the random numbers (a test gives fixed ones); empty puts them back.
void setRandomSource(std::function<double()> source);

}  // namespace lorvane::platform
