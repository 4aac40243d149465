// Loaded in front of a program by LD_PRELOAD, on Linux for x86-64: makes one of its file calls
// fail, and those after it if asked, or kills the program there. The kernel hands the calls over,
// so that none is missed, whichever function of whichever library made it. The environment says
// what happens:
//
// YUNSHAN_FAULT_FOLDERS  folders with their real paths, parted by colons; calls for files elsewhere
//                        pass uncounted
// YUNSHAN_FAULT_CALL     read, write, fsync, rename, unlink, open, truncate, copy, lock, or any
// YUNSHAN_FAULT_AT       which call of that kind, from 1
// YUNSHAN_FAULT_LASTS    once, or on: it and all calls of the kind after it
// YUNSHAN_FAULT_DOES     a number: the call fails with this errno; short: half of the bytes are
// read
//                        or written; full: half of them, and no more room from then on; kill: the
//                        program is killed before the call; tear: in the middle of it
// YUNSHAN_FAULT_LOG      a file that gets a line for each call: its kind, a tab, its file

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/fs.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/ucontext.h>
#include <unistd.h>

// The one place whose calls the kernel does not hand over: what is passed on leaves from here.
asm(R"(
    .text
    .hidden passOn
    .hidden passedOn
    .globl passOn
    .globl passedOn
passOn:
    mov %rdi, %rax
    mov %rsi, %rdi
    mov %rdx, %rsi
    mov %rcx, %rdx
    mov %r8, %r10
    mov %r9, %r8
    mov 8(%rsp), %r9
    syscall
passedOn:
    ret
)");

extern "C" {
/// Runs the call in the kernel; gives its result, or the errno as a negative number.
long passOn(long number, long a, long b, long c, long d, long e, long f);
extern const char passedOn;
}

namespace {

enum class Kind { Read, Write, Fsync, Rename, Unlink, Open, Truncate, Copy, Lock, Any, Sleep };

/// In the order of Kind.
constexpr std::array kindNames{"read", "write",    "fsync", "rename", "unlink",
                               "open", "truncate", "copy",  "lock",   "any"};

/// Where a call says which file it is about.
enum class Names { OpenFile, Path, PathInFolder, SecondPath, SecondPathInFolder, Nothing };

struct CallKind
{
    long number;
    Kind kind;
    Names names;
};

constexpr std::array calls{
    CallKind{SYS_read, Kind::Read, Names::OpenFile},
    CallKind{SYS_pread64, Kind::Read, Names::OpenFile},
    CallKind{SYS_readv, Kind::Read, Names::OpenFile},
    CallKind{SYS_preadv, Kind::Read, Names::OpenFile},
    CallKind{SYS_write, Kind::Write, Names::OpenFile},
    CallKind{SYS_pwrite64, Kind::Write, Names::OpenFile},
    CallKind{SYS_writev, Kind::Write, Names::OpenFile},
    CallKind{SYS_pwritev, Kind::Write, Names::OpenFile},
    CallKind{SYS_fsync, Kind::Fsync, Names::OpenFile},
    CallKind{SYS_fdatasync, Kind::Fsync, Names::OpenFile},
    CallKind{SYS_rename, Kind::Rename, Names::SecondPath},
    CallKind{SYS_renameat, Kind::Rename, Names::SecondPathInFolder},
    CallKind{SYS_renameat2, Kind::Rename, Names::SecondPathInFolder},
    CallKind{SYS_link, Kind::Rename, Names::SecondPath},
    CallKind{SYS_linkat, Kind::Rename, Names::SecondPathInFolder},
    CallKind{SYS_unlink, Kind::Unlink, Names::Path},
    CallKind{SYS_unlinkat, Kind::Unlink, Names::PathInFolder},
    CallKind{SYS_open, Kind::Open, Names::Path},
    CallKind{SYS_creat, Kind::Open, Names::Path},
    CallKind{SYS_openat, Kind::Open, Names::PathInFolder},
    CallKind{SYS_truncate, Kind::Truncate, Names::Path},
    CallKind{SYS_ftruncate, Kind::Truncate, Names::OpenFile},
    CallKind{SYS_fallocate, Kind::Truncate, Names::OpenFile},
    CallKind{SYS_copy_file_range, Kind::Copy, Names::OpenFile},
    CallKind{SYS_sendfile, Kind::Copy, Names::OpenFile},
    CallKind{SYS_ioctl, Kind::Copy, Names::OpenFile},
    CallKind{SYS_fcntl, Kind::Lock, Names::OpenFile},
    CallKind{SYS_nanosleep, Kind::Sleep, Names::Nothing},
    CallKind{SYS_clock_nanosleep, Kind::Sleep, Names::Nothing},
};

enum class Effect { None, Fails, Short, Full, Kills, Tears };

struct Plan
{
    const char* folders = "";
    Kind kind = Kind::Any;
    long at = 0;
    bool lasts = false;
    Effect effect = Effect::None;
    int failure = 0;
    int log = -1;
};

Plan plan;
std::atomic<long> counted;

struct Call
{
    long number;
    std::array<long, 6> arguments;
    const CallKind* kind;

    const char* path(size_t argument) const
    {
        return reinterpret_cast<const char*>(arguments[argument]);
    }
    long run() const
    {
        const auto& [a, b, c, d, e, f] = arguments;
        return passOn(number, a, b, c, d, e, f);
    }
};

using Path = std::array<char, PATH_MAX>;

/// What a link of /proc names; empty if there is none.
Path linked(const char* link)
{
    Path path{};
    if (readlink(link, path.data(), path.size() - 1) < 0)
        path[0] = 0;
    return path;
}

Path openFile(long descriptor)
{
    std::array<char, 64> link{};
    std::snprintf(link.data(), link.size(), "/proc/self/fd/%ld", descriptor);
    return linked(link.data());
}

Path inFolder(long folder, const char* name)
{
    Path path{};
    const bool isWhole = name[0] == '/';
    if (!isWhole)
        path = int(folder) == AT_FDCWD ? linked("/proc/self/cwd") : openFile(folder);
    const size_t length = std::strlen(path.data());
    std::snprintf(path.data() + length, path.size() - length, isWhole ? "%s" : "/%s", name);
    return path;
}

Path fileOf(const Call& call)
{
    switch (call.kind->names) {
    case Names::OpenFile:
        return openFile(call.arguments[0]);
    case Names::Path:
        return inFolder(AT_FDCWD, call.path(0));
    case Names::PathInFolder:
        return inFolder(call.arguments[0], call.path(1));
    case Names::SecondPath:
        return inFolder(AT_FDCWD, call.path(1));
    case Names::SecondPathInFolder:
        return inFolder(call.arguments[2], call.path(3));
    case Names::Nothing:
        break;
    }
    return {};
}

bool isBelowTheFolders(const char* path)
{
    for (const char* folder = plan.folders; *folder != 0;) {
        const size_t length = std::strcspn(folder, ":");
        const bool begins = std::strncmp(path, folder, length) == 0;
        if (length > 0 && begins && (path[length] == '/' || path[length] == 0))
            return true;
        folder += length + (folder[length] == ':' ? 1 : 0);
    }
    return false;
}

/// Of calls that do many things, whether this is the one that counts.
bool doesWhatItsKindSays(const Call& call)
{
    if (call.number == SYS_ioctl)
        return call.arguments[1] == long(FICLONE);
    if (call.number != SYS_fcntl)
        return true;
    const long command = call.arguments[1];
    const bool locks = command == F_SETLK || command == F_SETLKW || command == F_OFD_SETLK;
    return locks && reinterpret_cast<const flock*>(call.arguments[2])->l_type != F_UNLCK;
}

void log(const Call& call, const Path& file)
{
    if (plan.log < 0)
        return;
    std::array<char, PATH_MAX + 32> line{};
    const int length = std::snprintf(line.data(), line.size(), "%s\t%s\n",
                                     kindNames[size_t(call.kind->kind)], file.data());
    passOn(SYS_write, plan.log, long(line.data()), std::min<long>(length, line.size() - 1), 0, 0,
           0);
}

[[noreturn]] void killProgram()
{
    kill(getpid(), SIGKILL);
    for (;;)
        pause();
}

/// The call with half of its bytes, at least one.
long runHalf(Call call)
{
    const bool counts = call.number == SYS_read || call.number == SYS_pread64
                        || call.number == SYS_write || call.number == SYS_pwrite64;
    if (counts && call.arguments[2] > 1)
        call.arguments[2] /= 2;
    return call.run();
}

long runDisturbed(const Call& call, long number)
{
    switch (plan.effect) {
    case Effect::None:
        break;
    case Effect::Fails:
        return -plan.failure;
    case Effect::Short:
        return runHalf(call);
    case Effect::Full:
        return number == plan.at ? runHalf(call) : -ENOSPC;
    case Effect::Tears:
        runHalf(call);
        killProgram();
    case Effect::Kills:
        killProgram();
    }
    return call.run();
}

long resultOf(const Call& call)
{
    // Who waits for a lock that is never given need not wait in vain.
    if (call.kind->kind == Kind::Sleep)
        return plan.kind == Kind::Lock ? 0 : call.run();
    if (!doesWhatItsKindSays(call))
        return call.run();
    const Path file = fileOf(call);
    if (!isBelowTheFolders(file.data()))
        return call.run();
    log(call, file);
    if (plan.kind != Kind::Any && plan.kind != call.kind->kind)
        return call.run();
    const long number = ++counted;
    const bool isHit = number == plan.at || (plan.lasts && number > plan.at);
    return plan.at > 0 && isHit ? runDisturbed(call, number) : call.run();
}

void onCall(int /*signal*/, siginfo_t* info, void* context)
{
    greg_t* registers = static_cast<ucontext_t*>(context)->uc_mcontext.gregs;
    const Call call{info->si_syscall,
                    {registers[REG_RDI], registers[REG_RSI], registers[REG_RDX], registers[REG_R10],
                     registers[REG_R8], registers[REG_R9]},
                    std::find_if(calls.begin(), calls.end(), [&](const CallKind& kind) {
                        return kind.number == info->si_syscall;
                    })};
    const int error = errno;
    registers[REG_RAX] = resultOf(call);
    errno = error;
}

[[noreturn]] void refuse(const char* what)
{
    std::fprintf(stderr, "FaultShim: %s\n", what);
    _exit(99);
}

const char* setting(const char* name, const char* usual)
{
    const char* value = std::getenv(name);
    return value != nullptr ? value : usual;
}

Kind kindNamed(const char* name)
{
    for (size_t i = 0; i < kindNames.size(); ++i) {
        if (std::strcmp(name, kindNames[i]) == 0)
            return Kind(i);
    }
    refuse("YUNSHAN_FAULT_CALL names no kind of call");
}

void readEffect()
{
    const char* does = setting("YUNSHAN_FAULT_DOES", "0");
    constexpr std::array words{std::pair{"short", Effect::Short}, std::pair{"full", Effect::Full},
                               std::pair{"kill", Effect::Kills}, std::pair{"tear", Effect::Tears}};
    for (const auto& [word, effect] : words) {
        if (std::strcmp(does, word) == 0)
            plan.effect = effect;
    }
    plan.failure = std::atoi(does);
    if (plan.failure > 0)
        plan.effect = Effect::Fails;
    plan.lasts = plan.effect == Effect::Full
                 || std::strcmp(setting("YUNSHAN_FAULT_LASTS", "once"), "on") == 0;
}

void readPlan()
{
    plan.folders = setting("YUNSHAN_FAULT_FOLDERS", "");
    plan.kind = kindNamed(setting("YUNSHAN_FAULT_CALL", "any"));
    plan.at = std::atol(setting("YUNSHAN_FAULT_AT", "0"));
    readEffect();
    const char* file = setting("YUNSHAN_FAULT_LOG", "");
    if (*file != 0)
        plan.log = open(file, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
}

constexpr sock_filter load(size_t offset)
{
    return BPF_STMT(BPF_LD | BPF_W | BPF_ABS, unsigned(offset));
}

/// Goes on with the next line if the loaded word is this, else passes over so many lines.
constexpr sock_filter unlessEqual(unsigned long word, unsigned char lines)
{
    return BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, unsigned(word), 0, lines);
}

constexpr sock_filter answer(unsigned action)
{
    return BPF_STMT(BPF_RET | BPF_K, action);
}

/// From now on the kernel hands over what `calls` lists, unless it comes from passOn().
void catchCalls()
{
    const auto place = reinterpret_cast<unsigned long>(&passedOn);
    const size_t from = offsetof(seccomp_data, instruction_pointer);
    std::vector<sock_filter> rules;
    const auto add = [&](auto... more) { (rules.push_back(more), ...); };
    add(load(offsetof(seccomp_data, arch)), unlessEqual(AUDIT_ARCH_X86_64, 4));
    add(load(from), unlessEqual(place, 3));
    add(load(from + 4), unlessEqual(place >> 32, 1));
    add(answer(SECCOMP_RET_ALLOW));
    add(load(offsetof(seccomp_data, nr)));
    for (const CallKind& call : calls)
        add(unlessEqual(call.number, 1), answer(SECCOMP_RET_TRAP));
    add(answer(SECCOMP_RET_ALLOW));
    const sock_fprog program{static_cast<unsigned short>(rules.size()), rules.data()};
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0
        || prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0)
        refuse("the kernel does not hand over file calls");
}

[[gnu::constructor]] void begin()
{
    if (std::getenv("YUNSHAN_FAULT_FOLDERS") == nullptr)
        return;
    readPlan();
    using Action = struct sigaction;
    Action action{};
    action.sa_sigaction = onCall;
    action.sa_flags = SA_SIGINFO;
    if (sigaction(SIGSYS, &action, nullptr) != 0)
        refuse("SIGSYS cannot be handled");
    catchCalls();
}

} // namespace
