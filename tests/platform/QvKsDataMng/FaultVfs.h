#pragma once

// A SQLite file system for tests that fails one chosen call: every write, sync,
// truncate and lock of any file (the store and its journal) is a fault point,
// numbered from FailNth; the n-th fails as the disk or the lock would fail it.
// Installed as the default file system, so the store opens through it unchanged.
namespace FaultVfs {

// Registers the file system as the default; safe to call more than once.
void Install();

// Fails the n-th fault point from now (0: none) and restarts the count.
void FailNth(int n);
// Kills the process (SIGKILL, as kill -9 would) at the n-th fault point from now,
// before the call reaches the disk; 0: never.
void KillAtNth(int n);
// Fault points passed since the last FailNth or KillAtNth.
int Points();
// Whether the chosen point has failed.
bool Fired();

} // namespace FaultVfs
