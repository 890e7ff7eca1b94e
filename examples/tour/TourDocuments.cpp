// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "tour/TourDocuments.h"

#include <filesystem>
#include <fstream>
#include <iomanip>
#include <sstream>
#include <utility>

namespace fs = std::filesystem;

namespace {

fs::path documentPath(const std::string& folder, int step)
{
    std::ostringstream name;
    name << "step-" << std::setw(3) << std::setfill('0') << step << ".json";
    return fs::u8path(folder) / name.str();
}

} // namespace

TourDocuments::TourDocuments(std::string folder)
    : m_folder(std::move(folder))
{
}

bool TourDocuments::prepare()
{
    if (m_folder.empty())
        return true;
    std::error_code error;
    fs::create_directories(fs::u8path(m_folder), error);
    if (!fs::is_directory(fs::u8path(m_folder), error)) {
        m_problem = "cannot make the folder: " + m_folder;
        return false;
    }
    // The first document as well as any shows whether documents can be written; one from an
    // earlier tour keeps its content until then.
    const fs::path first = documentPath(m_folder, 1);
    return std::ofstream(first, std::ios::app).is_open() || fail(first.generic_u8string());
}

bool TourDocuments::write(int step, const std::string& text)
{
    if (m_folder.empty())
        return true;
    const fs::path path = documentPath(m_folder, step);
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << text;
    file.close();
    return file.good() || fail(path.generic_u8string());
}

bool TourDocuments::fail(const std::string& path)
{
    m_problem = "cannot write: " + path;
    return false;
}
