#pragma once

// Makes the module's resources current in the host for the guard's lifetime:
// pushed on construction, popped on destruction, so every way out of a handler,
// an exception included, pops what it pushed.
class ModuleResourceGuard
{
public:
    ModuleResourceGuard();
    ~ModuleResourceGuard();
    ModuleResourceGuard(const ModuleResourceGuard&) = delete;
    ModuleResourceGuard& operator=(const ModuleResourceGuard&) = delete;
};
