#include "diagnostics/system_survey.h"

#include "core/program.h"
#include "core/text.h"
#include "platform/session.h"
#include "platform/system.h"

#include <array>

namespace quorvane {

namespace {

constexpr std::int32_t Family9x = 1;
constexpr std::int32_t FamilyNt = 2;

constexpr std::array<std::string_view, 21> Privileges{
    "SeBackupPrivilege",
    "SeRestorePrivilege",
    "SeShutdownPrivilege",
    "SeDebugPrivilege",
    "SeRemoteShutdownPrivilege",
    "SeTcbPrivilege",
    "SeTakeOwnershipPrivilege",
    "SeSystemProfilePrivilege",
    "SeLockMemoryPrivilege",
    "SeMachineAccountPrivilege",
    "SeAssignPrimaryTokenPrivilege",
    "SeAuditPrivilege",
    "SeIncreaseQuotaPrivilege",
    "SeIncreaseBasePriorityPrivilege",
    "SeCreateTokenPrivilege",
    "SeSecurityPrivilege",
    "SeProfileSingleProcessPrivilege",
    "SeSystemtimePrivilege",
    "SeCreatePermanentPrivilege",
    "SeSystemEnvironmentPrivilege",
    "SeCreatePagefilePrivilege",
};

std::string Numbers(const VersionRecord& version) {
    return std::to_string(version.dwMajorVersion) + "." + std::to_string(version.dwMinorVersion);
}

std::string NtName(const VersionRecord& version) {
    switch (version.dwMajorVersion) {
    case 4:
        return "Microsoft Windows NT 4.0";
    case 5:
        switch (version.dwMinorVersion) {
        case 0:
            return "Microsoft Windows 2000";
        case 1:
            return "Microsoft Windows XP";
        case 2:
            return "Microsoft Windows Server 2003";
        default:
            break;
        }
        break;
    case 6:
        return "Microsoft Windows codename Vista";
    default:
        break;
    }
    return "Microsoft Windows NT " + Numbers(version);
}

std::string Name9x(const VersionRecord& version) {
    switch (version.dwMinorVersion) {
    case 0:
        return "Microsoft Windows 95";
    case 10:
        return "Microsoft Windows 98";
    case 90:
        return "Microsoft Windows Me";
    default:
        return "Microsoft Windows 9x" + Numbers(version);
    }
}

} // namespace

// A system that says what it is called is believed.
std::string SystemName(const VersionRecord& version) {
    if (version.dwPlatformId == FamilyNt)
        return version.displayName.empty() ? NtName(version) : version.displayName;
    return version.dwPlatformId == Family9x ? Name9x(version) : std::string();
}

std::string EditionName(std::uint16_t suiteMask) {
    struct Bits {
        std::uint16_t mask;
        const char* name;
    };
    std::string name;
    for (const Bits& edition : {Bits{512, "Home edition"}, Bits{1024, "Web edition"},
                                Bits{2, "Enterprise/Advanced edition"}, Bits{128, "Datacenter edition"}}) {
        if ((suiteMask & edition.mask) != 0) name = edition.name;
    }
    for (const Bits& addition :
         {Bits{4, "BackOffice system"}, Bits{8192, "Storage server upgrade"},
          Bits{16384, "Compute cluster server upgrade"}, Bits{1 | 32, "Small business system"}}) {
        if ((suiteMask & addition.mask) != 0) name += (name.empty() ? "" : ", ") + std::string(addition.name);
    }
    return name;
}

void DetectSystem(GlobalRecord& record, System& system, Session& session, Program& program) {
    const VersionRecord version = system.Version();
    if (SystemName(version).empty() || (version.dwPlatformId < FamilyNt && !record.RunOnWin9x)) {
        record.lpVersionInformation = version;
        program.ShowErrorDialog(0, "This version OS isn't supported!");
        session.End(1);
    }
    SurveySystem(record, system);
}

void SurveySystem(GlobalRecord& record, System& system) {
    record.lpVersionInformation = system.Version();
    const VersionRecord& version = record.lpVersionInformation;
    record.OS_Name = SystemName(version);
    for (const std::string& part : {EditionName(version.suiteMask), version.szCSDVersion}) {
        record.OS_Name += (part.empty() ? "" : " ") + part;
    }
    record.OS_Version = Numbers(version) + "." + std::to_string(version.dwBuildNumber);
    record.OS_ServicePack = version.szCSDVersion;
    record.OS_PID = std::to_string(version.dwPlatformId);
    record.LoggedOnUser = system.UserName();
    record.CurrentSystem.Computer_Name = system.ComputerName();
    record.ProcessID = system.ProcessId();
    record.ThreadID = system.ThreadId();
}

void EnableProcessPrivileges(System& system) {
    for (const std::string_view privilege : Privileges) {
        system.EnablePrivilege(privilege);
    }
}

} // namespace quorvane
