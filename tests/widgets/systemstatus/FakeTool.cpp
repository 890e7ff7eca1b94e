// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <thread>

#ifdef _WIN32
#include <windows.h>

#include <fcntl.h>
#include <io.h>
#endif

namespace {

std::string contentOf(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// Appends a line in one piece, whatever other tools append at the same time.
void append(const std::string& path, const std::string& line)
{
#ifdef _WIN32
    // A stream would look for the end first and write then.
    const HANDLE file =
        CreateFileA(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                    OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    WriteFile(file, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
    CloseHandle(file);
#else
    std::ofstream(path, std::ios::app | std::ios::binary) << line;
#endif
}

void log(const std::string& folder, const std::string& line)
{
    append(folder + "/calls.log", line + "\n");
}

/// Waits for as long as the file is there; not forever, for a test may end badly.
void waitWhileThere(const std::string& file)
{
    using std::chrono::steady_clock;
    const auto end = steady_clock::now() + std::chrono::minutes(10);
    while (std::filesystem::exists(file) && steady_clock::now() < end)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
}

void print(const std::string& bytes)
{
#ifdef _WIN32
    _setmode(_fileno(stdout), _O_BINARY);
#endif
    std::fwrite(bytes.data(), 1, bytes.size(), stdout);
    std::fflush(stdout);
}

} // namespace

/// Stands in for a Windows tool. What it does is told by files in the folder NORVEL_FAKE_TOOLS,
/// named by the tool and the letters of its last argument: NAME.hold, to wait until the file is
/// gone; NAME.answer, the bytes to print after that; NAME.linger, to wait then until the file is
/// gone; NAME.read, to read the standard input to its end; NAME.exit, the exit code, or "crash". It
/// writes into "calls.log" what it was called with, when it begins and when it ends.
int main(int argc, char** argv)
{
    const char* variable = std::getenv("NORVEL_FAKE_TOOLS");
    if (!variable)
        return 99;
    const std::string folder = variable;
    std::string call = TOOL_NAME;
    std::string name = folder + "/" TOOL_NAME "-";
    for (int i = 1; i < argc; ++i)
        call += "|" + std::string(argv[i]);
    for (const char letter : std::string(argc > 1 ? argv[argc - 1] : "")) {
        if ((letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z'))
            name += letter;
    }
    log(folder, "begin " + call);
    std::cerr << "this is no output" << std::endl;
    waitWhileThere(name + ".hold");
    print(contentOf(name + ".answer"));
    waitWhileThere(name + ".linger");
    if (std::filesystem::exists(name + ".read"))
        while (std::cin.get() != std::char_traits<char>::eof()) {
        }
    const std::string exit = contentOf(name + ".exit");
    if (exit == "crash")
        std::abort();
    log(folder, "end " + call);
    return std::atoi(exit.c_str());
}
