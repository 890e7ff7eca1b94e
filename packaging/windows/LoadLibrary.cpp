// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

// Loads a DLL by its path, as an editor does that takes it for a plug-in, and unloads it.

#include <cstdio>

#include <windows.h>

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: load_library DLL\n");
        return 2;
    }
    // What the DLL needs is looked for beside it.
    const HMODULE library = LoadLibraryExA(argv[1], nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (!library) {
        std::fprintf(stderr, "%s: error %lu\n", argv[1], GetLastError());
        return 1;
    }
    // norvel::RvEditorTrace::create(qrvkp::RvKpApplication*), as GCC names it.
    constexpr char create[] = "_ZN6norvel13RvEditorTrace6createEPN5qrvkp15RvKpApplicationE";
    const bool isThere = GetProcAddress(library, create) != nullptr;
    std::printf("%s is loaded and %s RvEditorTrace::create\n", argv[1], isThere ? "has" : "lacks");
    return FreeLibrary(library) && isThere ? 0 : 1;
}
