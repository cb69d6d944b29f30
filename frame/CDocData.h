#pragma once

// Per-document state of the module: none yet, but each document has its place.
struct CDocData
{ };
