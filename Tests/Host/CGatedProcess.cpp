#include "CGatedProcess.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <stdexcept>

#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/wait.h>
#include <unistd.h>

namespace NSKZ::Test {

namespace {

struct SGatedCall
{
    int number;
    const char* name;
    int pathArgument; // -1 for none
};
// Some are not there on every processor.
constexpr SGatedCall GATED_CALLS[] = {
#if defined(SYS_open)
    {SYS_open, "open", 0},
    {SYS_creat, "creat", 0},
    {SYS_mkdir, "mkdir", 0},
    {SYS_rmdir, "rmdir", 0},
    {SYS_unlink, "unlink", 0},
    {SYS_rename, "rename", 0},
    {SYS_link, "link", 0},
    {SYS_symlink, "symlink", 1},
#endif
#if defined(SYS_renameat)
    {SYS_renameat, "renameat", 1},
#endif
    {SYS_openat, "openat", 1},
    {SYS_openat2, "openat2", 1},
    {SYS_mkdirat, "mkdirat", 1},
    {SYS_unlinkat, "unlinkat", 1},
    {SYS_renameat2, "renameat2", 1},
    {SYS_linkat, "linkat", 1},
    {SYS_symlinkat, "symlinkat", 2},
    {SYS_truncate, "truncate", 0},
    {SYS_ftruncate, "ftruncate", -1},
    {SYS_fallocate, "fallocate", -1},
    {SYS_write, "write", -1},
    {SYS_writev, "writev", -1},
    {SYS_pwrite64, "pwrite64", -1},
    {SYS_pwritev, "pwritev", -1},
    {SYS_copy_file_range, "copy_file_range", -1},
    {SYS_fsync, "fsync", -1},
    {SYS_fdatasync, "fdatasync", -1},
    {SYS_sync_file_range, "sync_file_range", -1},
    {SYS_flock, "flock", -1},
    {SYS_close, "close", -1},
};

[[noreturn]] void Fail(const std::string& what)
{
    throw std::runtime_error("The system does not let the test hold system calls at a gate: " + what + ": " +
                             std::strerror(errno));
}

// Lets the calls of this process and of what it becomes ask at the file that is returned; -1 on failure.
int BuildGate()
{
    constexpr std::size_t COUNT = std::size(GATED_CALLS);
    std::array<sock_filter, COUNT + 3> filter = {};
    filter[0] = BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr));
    for (std::size_t i = 0; i < COUNT; ++i) {
        filter[i + 1] = BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned int>(GATED_CALLS[i].number),
                                 static_cast<unsigned char>(COUNT - i), 0);
    }
    filter[COUNT + 1] = BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW);
    filter[COUNT + 2] = BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_USER_NOTIF);
    const sock_fprog program = {static_cast<unsigned short>(filter.size()), filter.data()};
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0)
        return -1;
    return static_cast<int>(
        syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, SECCOMP_FILTER_FLAG_NEW_LISTENER, &program));
}

// Hands an open file to the process at the other end of a socket.
union UControl {
    cmsghdr header;
    char bytes[CMSG_SPACE(sizeof(int))];
};
bool SendFile(int socket, int file)
{
    char content = 'f';
    iovec part = {&content, 1};
    UControl control = {};
    msghdr message = {};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control.bytes;
    message.msg_controllen = sizeof control.bytes;
    cmsghdr* const header = CMSG_FIRSTHDR(&message);
    header->cmsg_level = SOL_SOCKET;
    header->cmsg_type = SCM_RIGHTS;
    header->cmsg_len = CMSG_LEN(sizeof file);
    std::memcpy(CMSG_DATA(header), &file, sizeof file);
    return sendmsg(socket, &message, 0) == 1;
}
int ReceiveFile(int socket)
{
    char content = 0;
    iovec part = {&content, 1};
    UControl control = {};
    msghdr message = {};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control.bytes;
    message.msg_controllen = sizeof control.bytes;
    int file = -1;
    if (recvmsg(socket, &message, MSG_CMSG_CLOEXEC) == 1 && CMSG_FIRSTHDR(&message) != nullptr)
        std::memcpy(&file, CMSG_DATA(CMSG_FIRSTHDR(&message)), sizeof file);
    return file;
}

// The text at an address of another process, or the beginning of a long one.
std::string ReadText(pid_t process, std::uint64_t address)
{
    constexpr std::size_t PAGE_SIZE_AT_LEAST = 4096;
    constexpr std::size_t MAX_SIZE = 8 * PAGE_SIZE_AT_LEAST;
    std::string text;
    while (text.size() < MAX_SIZE) {
        std::array<char, PAGE_SIZE_AT_LEAST> piece = {};
        // To the end of the page: the next one may not be there, but the text may go on in it.
        const std::size_t size = piece.size() - (address + text.size()) % piece.size();
        iovec here = {piece.data(), size};
        iovec there = {reinterpret_cast<void*>(address + text.size()), size};
        const ssize_t got = process_vm_readv(process, &here, 1, &there, 1, 0);
        const std::size_t length = got > 0 ? strnlen(piece.data(), static_cast<std::size_t>(got)) : 0;
        text.append(piece.data(), length);
        if (length < size)
            break;
    }
    return text;
}

// Whether an open file of another process is one with a path, and no pipe as that of its output.
bool IsFile(pid_t process, std::uint64_t file)
{
    std::error_code error;
    const std::filesystem::path target = std::filesystem::read_symlink(
        "/proc/" + std::to_string(process) + "/fd/" + std::to_string(file), error);
    return !error && target.is_absolute();
}

const SGatedCall& Find(int number)
{
    return *std::find_if(std::begin(GATED_CALLS), std::end(GATED_CALLS),
                         [number](const SGatedCall& call) { return call.number == number; });
}

} // namespace

CGatedProcess CGatedProcess::Run(const std::vector<std::string>& arguments, const std::string& directory,
                                 const std::function<EVerdict(const SCall&)>& judge)
{
    std::vector<char*> argv = {const_cast<char*>(KZCBUI_PATH)};
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);

    int sockets[2];
    int pipeEnds[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets) != 0 || pipe2(pipeEnds, O_CLOEXEC) != 0)
        Fail("no sockets");
    const pid_t child = fork();
    if (child < 0)
        Fail("no process");
    if (child == 0) {
        dup2(pipeEnds[1], STDOUT_FILENO);
        dup2(pipeEnds[1], STDERR_FILENO);
        // The search for leaks at the end opens files too, and would be judged; it is for the ungated runs.
        const char* const given = std::getenv("ASAN_OPTIONS");
        setenv("ASAN_OPTIONS",
               ((given != nullptr ? std::string(given) + ":" : std::string()) + "detect_leaks=0").c_str(), 1);
        const int gate = BuildGate();
        if (gate >= 0 && SendFile(sockets[1], gate))
            execv(argv[0], argv.data());
        _exit(127);
    }
    close(sockets[1]);
    close(pipeEnds[1]);
    const int gate = ReceiveFile(sockets[0]);
    close(sockets[0]);

    CGatedProcess process;
    bool hasBegun = false;
    for (bool isOutputOpen = true; isOutputOpen;) {
        pollfd ends[] = {{pipeEnds[0], POLLIN, 0}, {gate, POLLIN, 0}};
        if (poll(ends, gate >= 0 ? 2 : 1, -1) < 0)
            continue;
        if (gate >= 0 && (ends[1].revents & POLLIN) != 0) {
            seccomp_notif asked = {};
            if (ioctl(gate, SECCOMP_IOCTL_NOTIF_RECV, &asked) != 0)
                continue; // the process has ended meanwhile
            const SGatedCall& call = Find(asked.data.nr);
            const bool isOfFile =
                call.pathArgument >= 0 || IsFile(static_cast<pid_t>(asked.pid), asked.data.args[0]);
            if (!hasBegun && call.pathArgument >= 0) {
                hasBegun = ReadText(static_cast<pid_t>(asked.pid), asked.data.args[call.pathArgument])
                               .starts_with(directory);
            }
            EVerdict verdict = VERDICT_PASS;
            if (hasBegun && isOfFile) {
                process.calls.push_back(call.name);
                verdict = judge({process.calls.size(), call.name});
            }
            if (verdict == VERDICT_KILL) {
                kill(child, SIGKILL);
                continue;
            }
            seccomp_notif_resp answer = {};
            answer.id = asked.id;
            if (verdict == VERDICT_FAIL)
                answer.error = -ENOSPC;
            else
                answer.flags = SECCOMP_USER_NOTIF_FLAG_CONTINUE;
            ioctl(gate, SECCOMP_IOCTL_NOTIF_SEND, &answer);
        }
        if (ends[0].revents != 0) {
            char piece[65536];
            const ssize_t got = read(pipeEnds[0], piece, sizeof piece);
            if (got > 0)
                process.output.append(piece, static_cast<std::size_t>(got));
            else if (got == 0 || errno != EINTR)
                isOutputOpen = false;
        } else if (gate >= 0 && (ends[1].revents & (POLLHUP | POLLERR)) != 0 &&
                   (ends[1].revents & POLLIN) == 0) {
            // The process is gone; what it has written is still in the pipe.
            char piece[65536];
            for (ssize_t got; (got = read(pipeEnds[0], piece, sizeof piece)) > 0;)
                process.output.append(piece, static_cast<std::size_t>(got));
            isOutputOpen = false;
        }
    }
    close(pipeEnds[0]);
    if (gate >= 0)
        close(gate);
    int state = 0;
    waitpid(child, &state, 0);
    process.status = WIFEXITED(state) ? WEXITSTATUS(state) : -WTERMSIG(state);
    if (gate < 0)
        Fail("the filter is refused");
    return process;
}

} // namespace NSKZ::Test
