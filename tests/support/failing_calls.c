/* A machine that fails, to be preloaded (LD_PRELOAD) into a program under test: the so-many-th call of some kinds fails
 * with a given error. Calls for anything outside of the folders are let through and not counted.
 *
 *   FAILING_CALLS_BELOW    folders, absolute paths, with ":" between them
 *   FAILING_CALLS_KINDS    of open, read, stat, write, sync, name, memory, thread; with "," between them. "name" makes,
 *                          renames and removes; "memory" counts from the first call for one of the folders on
 *   FAILING_CALLS_AT       number of the call that fails, from 1 on
 *   FAILING_CALLS_ERRNO    its error; 0 does half of a read or write, as a device may
 *   FAILING_CALLS_STAY     if set, every later one fails as well, as on a full disk
 *   FAILING_CALLS_KILL     if set, the program is killed (SIGKILL) in place of that call
 *   FAILING_CALLS_NOTE     a file that is made when the call fails; it holds the call and the file's path. At the
 *                          program's end a second one, of this name and ".count", holds the number of calls
 */
#define _GNU_SOURCE /* NOLINT(bugprone-reserved-identifier): what the headers ask for */
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <pthread.h>
#include <signal.h>
#include <stdarg.h>
#include <stdatomic.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <unistd.h>

static pthread_mutex_t lock = PTHREAD_MUTEX_INITIALIZER;
static atomic_long calls;
static atomic_int isAtWork; /* whether the program has touched one of the folders */
static int countsMemory;
static long failsAt;
static int stays;

static long number(const char* variable)
{
    const char* text = getenv(variable);
    return text ? atol(text) : 0;
}

/* Whether a list holds a word. */
static int holds(const char* list, const char* word)
{
    const size_t length = strlen(word);
    for (const char* at = list; at; at = strchr(at, ',') ? strchr(at, ',') + 1 : NULL)
        if (strncmp(at, word, length) == 0 && (at[length] == ',' || at[length] == '\0'))
            return 1;
    return 0;
}

__attribute__((constructor)) static void begin(void)
{
    const char* kinds = getenv("FAILING_CALLS_KINDS");
    countsMemory = kinds && holds(kinds, "memory");
    failsAt = number("FAILING_CALLS_AT");
    stays = getenv("FAILING_CALLS_STAY") != NULL;
}

/* Appends to a file without passing through the calls below. */
static void append(const char* path, const char* text)
{
    const int file = (int)syscall(SYS_openat, AT_FDCWD, path, O_WRONLY | O_CREAT | O_APPEND, 0600);
    syscall(SYS_write, file, text, strlen(text));
    syscall(SYS_close, file);
}

static void note(const char* call, const char* path)
{
    const char* target = getenv("FAILING_CALLS_NOTE");
    char text[4200];
    if (!target)
        return;
    snprintf(text, sizeof text, "%s %s\n", call, path);
    append(target, text);
}

__attribute__((destructor)) static void noteCount(void)
{
    const char* target = getenv("FAILING_CALLS_NOTE");
    char path[4096];
    char text[32];
    if (!target)
        return;
    snprintf(path, sizeof path, "%s.count", target);
    snprintf(text, sizeof text, "%ld\n", (long)calls);
    append(path, text);
}

static int isBelow(const char* path)
{
    const char* folder = getenv("FAILING_CALLS_BELOW");
    while (folder && *folder) {
        const char* end = strchr(folder, ':');
        const size_t length = end ? (size_t)(end - folder) : strlen(folder);
        if (strncmp(path, folder, length) == 0)
            return 1;
        folder = end ? end + 1 : NULL;
    }
    return 0;
}

/* Whether this call is one that fails; errno is set then, to 0 for a short count. Calls for no file have no path. */
static int failsFor(const char* kind, const char* call, const char* path)
{
    const char* kinds = getenv("FAILING_CALLS_KINDS");
    int isFailing;
    if (path && !isBelow(path))
        return 0;
    isAtWork = 1;
    if (!kinds || !holds(kinds, kind))
        return 0;
    pthread_mutex_lock(&lock);
    ++calls;
    isFailing = calls == failsAt || (failsAt > 0 && calls > failsAt && stays);
    if (isFailing && getenv("FAILING_CALLS_KILL"))
        kill(getpid(), SIGKILL);
    if (isFailing)
        note(call, path ? path : "");
    pthread_mutex_unlock(&lock);
    if (isFailing)
        errno = (int)number("FAILING_CALLS_ERRNO");
    return isFailing;
}

/* The path of a relative one's file. */
static int failsAtPath(const char* kind, const char* call, const char* path)
{
    char folder[2048];
    char whole[4096];
    if (!path || path[0] == '/' || !getcwd(folder, sizeof folder))
        return failsFor(kind, call, path);
    snprintf(whole, sizeof whole, "%s/%s", folder, path);
    return failsFor(kind, call, whole);
}

static int failsAtFile(const char* kind, const char* call, int descriptor)
{
    char link[64];
    char path[4096];
    ssize_t length;
    snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
    length = readlink(link, path, sizeof path - 1);
    if (length < 0)
        return 0;
    path[length] = '\0';
    return failsFor(kind, call, path);
}

static int failsForMemory(void)
{
    long call;
    if (!countsMemory || !isAtWork)
        return 0;
    call = ++calls;
    if (failsAt == 0 || (call != failsAt && !(call > failsAt && stays)))
        return 0;
    if (call == failsAt)
        note("memory", "");
    errno = ENOMEM;
    return 1;
}

/* From here on what programs call instead of the C library. */
#pragma GCC visibility push(default)

#define REAL(name) ((__typeof__(&name))dlsym(RTLD_NEXT, #name))


/* Whether a read or write fails; with an error of 0 it does half of its work instead. */
static int failsOrShortens(const char* kind, const char* call, int file, size_t* count)
{
    if (!failsAtFile(kind, call, file))
        return 0;
    if (errno != 0)
        return 1;
    *count = (*count + 1) / 2;
    return 0;
}

ssize_t write(int file, const void* bytes, size_t count)
{
    return failsOrShortens("write", "write", file, &count) ? -1 : REAL(write)(file, bytes, count);
}

ssize_t pwrite(int file, const void* bytes, size_t count, off_t at)
{
    return failsOrShortens("write", "pwrite", file, &count) ? -1 : REAL(pwrite)(file, bytes, count, at);
}

ssize_t pwrite64(int file, const void* bytes, size_t count, off64_t at) { return pwrite(file, bytes, count, at); }

ssize_t sendfile(int to, int from, off_t* at, size_t count)
{
    return failsOrShortens("write", "sendfile", to, &count) ? -1 : REAL(sendfile)(to, from, at, count);
}

ssize_t sendfile64(int to, int from, off64_t* at, size_t count) { return sendfile(to, from, at, count); }

int ftruncate(int file, off_t size)
{
    return failsAtFile("write", "ftruncate", file) ? -1 : REAL(ftruncate)(file, size);
}

int ftruncate64(int file, off64_t size) { return ftruncate(file, size); }

ssize_t read(int file, void* bytes, size_t count)
{
    return failsOrShortens("read", "read", file, &count) ? -1 : REAL(read)(file, bytes, count);
}

ssize_t pread(int file, void* bytes, size_t count, off_t at)
{
    return failsOrShortens("read", "pread", file, &count) ? -1 : REAL(pread)(file, bytes, count, at);
}

ssize_t pread64(int file, void* bytes, size_t count, off64_t at) { return pread(file, bytes, count, at); }

off_t lseek(int file, off_t at, int whence)
{
    return failsAtFile("read", "lseek", file) ? -1 : REAL(lseek)(file, at, whence);
}

off64_t lseek64(int file, off64_t at, int whence) { return lseek(file, at, whence); }

int open(const char* path, int flags, ...)
{
    va_list more;
    va_start(more, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) ? va_arg(more, mode_t) : 0;
    va_end(more);
    return failsAtPath("open", "open", path) ? -1 : REAL(open)(path, flags, mode);
}

int open64(const char* path, int flags, ...)
{
    va_list more;
    va_start(more, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) ? va_arg(more, mode_t) : 0;
    va_end(more);
    return failsAtPath("open", "open", path) ? -1 : REAL(open64)(path, flags, mode);
}

FILE* fopen(const char* path, const char* mode) { return failsAtPath("open", "fopen", path) ? NULL : REAL(fopen)(path, mode); }
FILE* fopen64(const char* path, const char* mode) { return failsAtPath("open", "fopen", path) ? NULL : REAL(fopen64)(path, mode); }

int stat(const char* path, struct stat* status)
{
    return failsAtPath("stat", "stat", path) ? -1 : REAL(stat)(path, status);
}

int stat64(const char* path, struct stat64* status)
{
    return failsAtPath("stat", "stat", path) ? -1 : REAL(stat64)(path, status);
}

int fstat(int file, struct stat* status) { return failsAtFile("stat", "fstat", file) ? -1 : REAL(fstat)(file, status); }
int fstat64(int file, struct stat64* status) { return failsAtFile("stat", "fstat", file) ? -1 : REAL(fstat64)(file, status); }

int statx(int folder, const char* path, int flags, unsigned int mask, struct statx* status)
{
    const int fails = path[0] == '\0' ? failsAtFile("stat", "statx", folder) : failsAtPath("stat", "statx", path);
    return fails ? -1 : REAL(statx)(folder, path, flags, mask, status);
}

int fsync(int file) { return failsAtFile("sync", "fsync", file) ? -1 : REAL(fsync)(file); }
int fdatasync(int file) { return failsAtFile("sync", "fdatasync", file) ? -1 : REAL(fdatasync)(file); }

int rename(const char* from, const char* to) { return failsAtPath("name", "rename", to) ? -1 : REAL(rename)(from, to); }
int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned int flags)
{
    return failsAtPath("name", "renameat2", to) ? -1 : REAL(renameat2)(fromFolder, from, toFolder, to, flags);
}
int mkdir(const char* path, mode_t mode) { return failsAtPath("name", "mkdir", path) ? -1 : REAL(mkdir)(path, mode); }
int unlink(const char* path) { return failsAtPath("name", "unlink", path) ? -1 : REAL(unlink)(path); }
int remove(const char* path) { return failsAtPath("name", "remove", path) ? -1 : REAL(remove)(path); }
int rmdir(const char* path) { return failsAtPath("name", "rmdir", path) ? -1 : REAL(rmdir)(path); }
int link(const char* from, const char* to) { return failsAtPath("name", "link", to) ? -1 : REAL(link)(from, to); }

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*begin)(void*), void* argument)
{
    return failsFor("thread", "pthread_create", NULL) ? errno : REAL(pthread_create)(thread, attributes, begin, argument);
}

/* dlsym needs memory itself, so the C library's own names are called here. NOLINTBEGIN(bugprone-reserved-identifier) */
extern void* __libc_malloc(size_t);
extern void* __libc_calloc(size_t, size_t);
extern void* __libc_realloc(void*, size_t);
extern void* __libc_memalign(size_t, size_t);
/* NOLINTEND(bugprone-reserved-identifier) */

void* malloc(size_t size) { return failsForMemory() ? NULL : __libc_malloc(size); }
void* calloc(size_t count, size_t size) { return failsForMemory() ? NULL : __libc_calloc(count, size); }
void* realloc(void* memory, size_t size) { return failsForMemory() ? NULL : __libc_realloc(memory, size); }
void* aligned_alloc(size_t alignment, size_t size) { return failsForMemory() ? NULL : __libc_memalign(alignment, size); }

int posix_memalign(void** memory, size_t alignment, size_t size)
{
    if (failsForMemory())
        return ENOMEM;
    *memory = __libc_memalign(alignment, size);
    return *memory ? 0 : ENOMEM;
}
