// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include "ScriptedSource.h"

#include <utility>

void SourceScript::ask(const QString& question)
{
    {
        const std::lock_guard lock(m_mutex);
        m_asked.append(question);
        m_askedIn.append(QThread::currentThread());
    }
    if (question == heldQuestion)
        released.acquire();
}

QStringList SourceScript::asked() const
{
    const std::lock_guard lock(m_mutex);
    return m_asked;
}

QList<QThread*> SourceScript::askedIn() const
{
    const std::lock_guard lock(m_mutex);
    return m_askedIn;
}

ScriptedSource::ScriptedSource(std::shared_ptr<SourceScript> script)
    : m_script(std::move(script))
{
}

qint64 ScriptedSource::installedMemory()
{
    return m_script->installedMemory;
}

double ScriptedSource::cpuLoad()
{
    m_script->ask("cpu");
    return m_script->cpuLoad;
}

qint64 ScriptedSource::processMemory()
{
    m_script->ask("memory");
    return m_script->processMemory;
}

QString ScriptedSource::hardwareText()
{
    m_script->ask("hardware");
    return "the hardware";
}

QString ScriptedSource::graphicsText()
{
    m_script->ask("graphics");
    return "the graphics";
}
