// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

// Under Wine a Windows program cannot wait for a program of the machine below it. This one stands
// in its place: a copy of it called ffmpeg.exe runs the machine's ffmpeg with the same arguments,
// where file names of Windows become those of the machine, and gives what that printed and its exit
// code. Tests make their media files with it.

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

namespace fs = std::filesystem;

namespace {

constexpr int failedToRun = 127;
constexpr DWORD pollMs = 2;

/// What Wine's kernel32.dll has beyond Windows' own: the name of a file on the machine below, in
/// memory of the process heap.
using GetUnixFileName = char*(CDECL*)(LPCWSTR name);

GetUnixFileName unixFileNameFunction()
{
    const FARPROC function =
        GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name");
    return reinterpret_cast<GetUnixFileName>(reinterpret_cast<void*>(function));
}

std::string unixFileName(const fs::path& path)
{
    const GetUnixFileName function = unixFileNameFunction();
    char* const name = function ? function(path.c_str()) : nullptr;
    if (!name)
        return {};
    const std::string copy = name;
    HeapFree(GetProcessHeap(), 0, name);
    return copy;
}

bool beginsWithADrive(const std::wstring& text)
{
    return text.size() > 2 && text[1] == L':' && (text[2] == L'/' || text[2] == L'\\');
}

std::string quoted(const std::string& text)
{
    std::string result = "'";
    for (const char c : text)
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return result + "'";
}

std::string unixArgument(const std::wstring& argument)
{
    const fs::path path(argument);
    return quoted(beginsWithADrive(argument) ? unixFileName(path) : path.u8string());
}

/// The program as a line for the shell.
std::string shellLine(const fs::path& program)
{
    int count = 0;
    LPWSTR* const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    std::string line = quoted(program.stem().u8string());
    for (int i = 1; i < count; ++i)
        line += ' ' + unixArgument(arguments[i]);
    LocalFree(arguments);
    return line;
}

fs::path thisProgram()
{
    std::wstring name(32768, L'\0');
    name.resize(GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size())));
    return name;
}

void print(const fs::path& file, std::ostream& stream)
{
    std::ifstream input(file, std::ios::binary);
    // An empty file would set the stream's failure bit.
    if (input.peek() != std::ifstream::traits_type::eof())
        stream << input.rdbuf();
    stream.flush();
}

/// A folder that nobody else uses and that is removed at the end.
class WorkFolder
{
public:
    WorkFolder()
        : m_path(fs::temp_directory_path() /
                 ("norvel-unix-program-" + std::to_string(GetCurrentProcessId())))
    {
        fs::create_directories(m_path);
    }
    ~WorkFolder()
    {
        std::error_code error;
        fs::remove_all(m_path, error);
    }
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    fs::path file(const char* name) const { return m_path / name; }

private:
    const fs::path m_path;
};

/// Starts a shell with the script. Its end cannot be waited for.
bool startShell(const fs::path& script)
{
    std::wstring command = L"\\\\?\\unix\\bin\\sh " + fs::u8path(unixFileName(script)).wstring();
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    return CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                          &startup, &process) != 0;
}

int run()
{
    const WorkFolder folder;
    const fs::path script = folder.file("script");
    const fs::path status = folder.file("status");
    const std::string base = unixFileName(script);
    std::ofstream(script, std::ios::binary)
        << shellLine(thisProgram()) << " >" << quoted(base + ".out") << " 2>"
        << quoted(base + ".err") << " </dev/null\necho $? >" << quoted(base + ".status") << "\nmv "
        << quoted(base + ".status") << ' ' << quoted(unixFileName(status)) << '\n';
    if (!startShell(script))
        return failedToRun;
    while (!fs::exists(status))
        Sleep(pollMs);
    print(folder.file("script.out"), std::cout);
    print(folder.file("script.err"), std::cerr);
    int exitCode = failedToRun;
    std::ifstream(status) >> exitCode;
    return exitCode;
}

} // namespace

int main()
{
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    if (!unixFileNameFunction()) {
        std::cerr << "runs under Wine only\n";
        return failedToRun;
    }
    return run();
}
