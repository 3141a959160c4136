#include "platform/linux/desktop/command.h"

#include "platform/linux/desktop/patience.h"

#include <QProcess>
#include <QStringList>
#include <csignal>
#include <fstream>
#include <iterator>
#include <sstream>

namespace quorvane {

namespace {

QStringList ToList(const std::vector<std::string>& arguments) {
    QStringList list;
    for (const std::string& argument : arguments) {
        list << QString::fromStdString(argument);
    }
    return list;
}

// The 22nd field of the process's stat file. The second, the name in brackets, may hold blanks and brackets.
std::string StartTimeOf(std::int64_t processId) {
    std::ifstream file("/proc/" + std::to_string(processId) + "/stat");
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    const std::size_t bracket = text.rfind(')');
    if (bracket == std::string::npos) {
        return {};
    }
    std::istringstream fields(text.substr(bracket + 1));
    std::string field;
    for (int number = 3; number <= 22; ++number) {
        fields >> field;
    }
    return field;
}

} // namespace

std::optional<std::string> RunCommand(const std::string& program, const std::vector<std::string>& arguments,
                                      Patience& patience) {
    QProcess process;
    process.setStandardErrorFile(QProcess::nullDevice());
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(QString::fromStdString(program), ToList(arguments));
    const bool ended = patience.Until([&process] { return process.state() == QProcess::NotRunning; });
    if (!ended) {
        process.kill();
        process.waitForFinished(1000);
    }
    if (!ended || process.error() == QProcess::FailedToStart ||
        process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        return std::nullopt;
    }
    return process.readAllStandardOutput().toStdString();
}

bool StartedProgram::IsRunning() const {
    return processId > 0 && !startTime.empty() && StartTimeOf(processId) == startTime;
}

void StartedProgram::Terminate() const {
    if (IsRunning()) kill(static_cast<pid_t>(processId), SIGTERM);
}

std::optional<StartedProgram> StartProgram(const std::string& program,
                                           const std::vector<std::string>& arguments) {
    QProcess process;
    process.setProgram(QString::fromStdString(program));
    process.setArguments(ToList(arguments));
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    qint64 processId = 0;
    if (!process.startDetached(&processId)) return std::nullopt;
    return StartedProgram{processId, StartTimeOf(processId)};
}

} // namespace quorvane
