// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/systemstatus/WindowsSystemSource_windows.h>

#include <norvel/widgets/systemstatus/WmicText.h>

#include <QLibrary>

#include <algorithm>
#include <bitset>
#include <cstddef>
#include <memory>
#include <vector>

#include <qt_windows.h>

#include <dxgi.h>

#define PSAPI_VERSION 2 // the functions in kernel32
#include <psapi.h>

namespace norvel {

namespace {

/// A set of logical processors: in each group those of the mask.
using ProcessorSet = std::vector<GROUP_AFFINITY>;

struct ReleaseObject
{
    void operator()(IUnknown* object) const { object->Release(); }
};

template <class Interface>
using ComPointer = std::unique_ptr<Interface, ReleaseObject>;

qint64 ticksOf(const FILETIME& time)
{
    ULARGE_INTEGER ticks;
    ticks.LowPart = time.dwLowDateTime;
    ticks.HighPart = time.dwHighDateTime;
    return static_cast<qint64>(ticks.QuadPart);
}

/// In units of 100 ns.
CpuTimes cpuTimes()
{
    FILETIME idle{};
    FILETIME kernel{};
    FILETIME user{};
    if (!GetSystemTimes(&idle, &kernel, &user))
        return {};
    return CpuTimes::fromWindows(ticksOf(idle), ticksOf(kernel), ticksOf(user));
}

/// The logical processors of each core, or of each package, which is what a socket holds.
std::vector<ProcessorSet> processorSets(LOGICAL_PROCESSOR_RELATIONSHIP relationship)
{
    using Record = SYSTEM_LOGICAL_PROCESSOR_INFORMATION_EX;
    DWORD size = 0;
    GetLogicalProcessorInformationEx(relationship, nullptr, &size);
    std::vector<std::byte> buffer(size);
    if (!GetLogicalProcessorInformationEx(relationship, reinterpret_cast<Record*>(buffer.data()),
                                          &size))
        return {};
    std::vector<ProcessorSet> sets;
    for (DWORD position = 0; position < size;) {
        const auto* const record = reinterpret_cast<const Record*>(buffer.data() + position);
        const GROUP_AFFINITY* const masks = record->Processor.GroupMask;
        sets.emplace_back(masks, masks + record->Processor.GroupCount);
        position += record->Size;
    }
    return sets;
}

bool haveCommon(const ProcessorSet& left, const ProcessorSet& right)
{
    return std::any_of(left.begin(), left.end(), [&](const GROUP_AFFINITY& a) {
        return std::any_of(right.begin(), right.end(), [&](const GROUP_AFFINITY& b) {
            return a.Group == b.Group && (a.Mask & b.Mask) != 0;
        });
    });
}

int countOf(const ProcessorSet& processors)
{
    std::size_t count = 0;
    for (const GROUP_AFFINITY& group : processors)
        count += std::bitset<64>(group.Mask).count();
    return static_cast<int>(count);
}

// All processors of a machine are of one kind, so the first one tells for all.
constexpr const wchar_t* firstProcessor = L"HARDWARE\\DESCRIPTION\\System\\CentralProcessor\\0";

QString processorName()
{
    wchar_t name[256] = L"";
    DWORD size = sizeof name;
    RegGetValueW(HKEY_LOCAL_MACHINE, firstProcessor, L"ProcessorNameString", RRF_RT_REG_SZ, nullptr,
                 name, &size);
    return QString::fromWCharArray(name).trimmed();
}

int processorMegahertz()
{
    DWORD megahertz = 0;
    DWORD size = sizeof megahertz;
    RegGetValueW(HKEY_LOCAL_MACHINE, firstProcessor, L"~MHz", RRF_RT_REG_DWORD, nullptr, &megahertz,
                 &size);
    return static_cast<int>(megahertz);
}

QVector<WmicProcessor> processors()
{
    const std::vector<ProcessorSet> cores = processorSets(RelationProcessorCore);
    const QString name = processorName();
    const int megahertz = processorMegahertz();
    QVector<WmicProcessor> found;
    for (const ProcessorSet& package : processorSets(RelationProcessorPackage)) {
        const auto coreCount =
            std::count_if(cores.begin(), cores.end(),
                          [&](const ProcessorSet& core) { return haveCommon(core, package); });
        found.append({megahertz, name, static_cast<int>(coreCount), countOf(package)});
    }
    return found;
}

ComPointer<IDXGIFactory1> graphicsFactory()
{
    using Create = HRESULT(WINAPI*)(REFIID, void**);
    // Loaded when it is asked for: no program needs it otherwise to start.
    const auto create =
        reinterpret_cast<Create>(QLibrary::resolve(QStringLiteral("dxgi"), "CreateDXGIFactory1"));
    void* factory = nullptr;
    if (!create || FAILED(create(__uuidof(IDXGIFactory1), &factory)))
        return nullptr;
    return ComPointer<IDXGIFactory1>(static_cast<IDXGIFactory1*>(factory));
}

/// The adapter at this place; null after the last one.
ComPointer<IDXGIAdapter1> adapterAt(IDXGIFactory1& factory, UINT index)
{
    IDXGIAdapter1* adapter = nullptr;
    return ComPointer<IDXGIAdapter1>(SUCCEEDED(factory.EnumAdapters1(index, &adapter)) ? adapter
                                                                                       : nullptr);
}

} // namespace

WindowsSystemSource::WindowsSystemSource()
    : m_lastTimes(cpuTimes())
{
}

qint64 WindowsSystemSource::installedMemory()
{
    MEMORYSTATUSEX memory{};
    memory.dwLength = sizeof memory;
    return GlobalMemoryStatusEx(&memory) ? static_cast<qint64>(memory.ullTotalPhys) : 0;
}

double WindowsSystemSource::cpuLoad()
{
    return m_lastTimes.advanceTo(cpuTimes());
}

qint64 WindowsSystemSource::processMemory()
{
    PROCESS_MEMORY_COUNTERS memory{};
    return GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory)
               ? static_cast<qint64>(memory.WorkingSetSize)
               : 0;
}

QString WindowsSystemSource::hardwareText()
{
    return WmicText::processors(processors()) + WmicText::memory(installedMemory());
}

QString WindowsSystemSource::graphicsText()
{
    const ComPointer<IDXGIFactory1> factory = graphicsFactory();
    if (!factory)
        return {};
    QStringList names;
    UINT index = 0;
    while (const ComPointer<IDXGIAdapter1> adapter = adapterAt(*factory, index++)) {
        DXGI_ADAPTER_DESC1 description{};
        if (SUCCEEDED(adapter->GetDesc1(&description)) &&
            !(description.Flags & DXGI_ADAPTER_FLAG_SOFTWARE))
            names.append(QString::fromWCharArray(description.Description));
    }
    return WmicText::videoControllers(names);
}

} // namespace norvel
