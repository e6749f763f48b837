/* Loaded in front of the C library: numbers the calls that change what lies below some folders, and lets one
   of them fail, or ends the process in front of it. Streams of the C library pass by unseen: the program has
   none.

   FAULT_ROOTS  the folders, with a colon between them, by their real names
   FAULT_LIST   a file that gets a line "number kinds name path" for each call, or for the struck one only;
                `kinds` has a letter for each FAULT_KIND that can befall the call: k, i, s, a
   FAULT_COUNT_FILE  a file that gets the number of calls when the process ends
   FAULT_AT     the number of the call that is struck
   FAULT_KIND   kill, EIO, ENOSPC or EACCES */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <limits.h>
#include <linux/fs.h>
#include <signal.h>
#include <stdarg.h>
#include <stdatomic.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

static atomic_int count;
static int at, number, listFile = -1;
static char kind;
static const char* roots;

/* The C library's own calls are meant for the lines of this library. */
static int OpenList(const char* path) {
  return path ? (int)syscall(SYS_openat, AT_FDCWD, path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666)
              : -1;
}

__attribute__((constructor)) static void Begin(void) {
  const char* name = getenv("FAULT_KIND");
  const char* where = getenv("FAULT_AT");
  roots = getenv("FAULT_ROOTS");
  at = where ? atoi(where) : 0;
  kind = !name                     ? 0
         : !strcmp(name, "kill")   ? 'k'
         : !strcmp(name, "EIO")    ? 'i'
         : !strcmp(name, "ENOSPC") ? 's'
                                   : 'a';
  number = kind == 'i' ? EIO : kind == 's' ? ENOSPC : EACCES;
  listFile = OpenList(getenv("FAULT_LIST"));
}

__attribute__((destructor)) static void End(void) {
  char text[16];
  const int file = OpenList(getenv("FAULT_COUNT_FILE"));
  if (file < 0) return;
  syscall(SYS_write, file, text, (size_t)snprintf(text, sizeof text, "%d\n", atomic_load(&count)));
  syscall(SYS_close, file);
}

/* With one worker the order of the program's calls hardly changes. */
int get_nprocs(void) { return 1; }

static int IsBelowRoots(const char* path) {
  for (const char* root = roots; root && *root;) {
    const char* end = strchrnul(root, ':');
    const size_t size = (size_t)(end - root);
    if (!strncmp(path, root, size) && (path[size] == '/' || !path[size])) return 1;
    root = *end ? end + 1 : end;
  }
  return 0;
}

/* True when the call is to fail; errno is set then. */
static int Strike(const char* kinds, const char* name, const char* path) {
  if (!IsBelowRoots(path)) return 0;
  const int here = atomic_fetch_add(&count, 1) + 1;
  const int struck = here == at && strchr(kinds, kind);
  if (listFile >= 0 && (struck || !at)) {
    char line[PATH_MAX + 64];
    const int size = snprintf(line, sizeof line, "%d %s %s %s\n", here, kinds, name, path);
    syscall(SYS_write, listFile, line, (size_t)size);
  }
  if (!struck) return 0;
  if (kind == 'k') syscall(SYS_kill, getpid(), SIGKILL);
  errno = number;
  return 1;
}

static int StrikeFile(const char* kinds, const char* name, int file) {
  char link[32], path[PATH_MAX];
  snprintf(link, sizeof link, "/proc/self/fd/%d", file);
  const ssize_t size = file > 2 ? readlink(link, path, sizeof path - 1) : -1;
  if (size < 0) return 0;
  path[size] = 0;
  return Strike(kinds, name, path);
}

static int StrikePath(const char* kinds, const char* name, int folder, const char* path) {
  char link[32], whole[2 * PATH_MAX];
  if (!path || *path == '/') return path && Strike(kinds, name, path);
  snprintf(link, sizeof link, folder == AT_FDCWD ? "/proc/self/cwd" : "/proc/self/fd/%d", folder);
  const ssize_t size = readlink(link, whole, PATH_MAX - 1);
  if (size < 0) return 0;
  snprintf(whole + size, sizeof whole - (size_t)size, "/%s", path);
  return Strike(kinds, name, whole);
}

#define REAL(name) ((__typeof__(&name))dlsym(RTLD_NEXT, #name))

/* What can befall a call: a new entry or new bytes need room, an entry needs the right to it. */
#define ENTRY "kisa"
#define BYTES "kis"
#define CHANGE "kia"
#define FLUSH "ki"

#define FILE_CALL(kinds, type, name, parameters, ...) \
  type name parameters {                              \
    if (StrikeFile(kinds, #name, file)) return -1;    \
    return REAL(name)(__VA_ARGS__);                   \
  }
#define PATH_CALL(kinds, name, folder, path, parameters, ...) \
  int name parameters {                                       \
    if (StrikePath(kinds, #name, folder, path)) return -1;    \
    return REAL(name)(__VA_ARGS__);                           \
  }

static int IsChange(int flags) {
  return (flags & O_ACCMODE) != O_RDONLY || (flags & (O_CREAT | O_TRUNC)) != 0;
}
static const char* KindsOfOpen(int flags) {
  return (flags & O_CREAT) || (flags & O_TMPFILE) == O_TMPFILE ? ENTRY : CHANGE;
}
#define OPEN(name)                                                                           \
  int name(const char* path, int flags, ...) {                                               \
    va_list rest;                                                                            \
    va_start(rest, flags);                                                                   \
    const mode_t mode = va_arg(rest, mode_t);                                                \
    va_end(rest);                                                                            \
    if (IsChange(flags) && StrikePath(KindsOfOpen(flags), #name, AT_FDCWD, path)) return -1; \
    return REAL(name)(path, flags, mode);                                                    \
  }
#define OPENAT(name)                                                                       \
  int name(int folder, const char* path, int flags, ...) {                                 \
    va_list rest;                                                                          \
    va_start(rest, flags);                                                                 \
    const mode_t mode = va_arg(rest, mode_t);                                              \
    va_end(rest);                                                                          \
    if (IsChange(flags) && StrikePath(KindsOfOpen(flags), #name, folder, path)) return -1; \
    return REAL(name)(folder, path, flags, mode);                                          \
  }
OPEN(open)
OPEN(open64)
OPENAT(openat)
OPENAT(openat64)
PATH_CALL(ENTRY, creat, AT_FDCWD, path, (const char* path, mode_t mode), path, mode)
PATH_CALL(ENTRY, creat64, AT_FDCWD, path, (const char* path, mode_t mode), path, mode)

FILE_CALL(BYTES, ssize_t, write, (int file, const void* bytes, size_t size), file, bytes, size)
FILE_CALL(BYTES, ssize_t, pwrite, (int file, const void* bytes, size_t size, off_t where), file, bytes, size,
          where)
FILE_CALL(BYTES, ssize_t, pwrite64, (int file, const void* bytes, size_t size, off64_t where), file, bytes,
          size, where)
FILE_CALL(BYTES, ssize_t, writev, (int file, const struct iovec* parts, int size), file, parts, size)
FILE_CALL(BYTES, int, ftruncate, (int file, off_t size), file, size)
FILE_CALL(BYTES, int, ftruncate64, (int file, off64_t size), file, size)
FILE_CALL(BYTES, int, fallocate, (int file, int mode, off_t where, off_t size), file, mode, where, size)
FILE_CALL(BYTES, int, fallocate64, (int file, int mode, off64_t where, off64_t size), file, mode, where, size)
FILE_CALL(BYTES, ssize_t, copy_file_range,
          (int source, off64_t* from, int file, off64_t* to, size_t size, unsigned flags), source, from, file,
          to, size, flags)
FILE_CALL(BYTES, ssize_t, sendfile, (int file, int source, off_t* from, size_t size), file, source, from,
          size)
FILE_CALL(BYTES, ssize_t, sendfile64, (int file, int source, off64_t* from, size_t size), file, source, from,
          size)
FILE_CALL(CHANGE, int, fchmod, (int file, mode_t mode), file, mode)
FILE_CALL(CHANGE, int, futimens, (int file, const struct timespec times[2]), file, times)
FILE_CALL(FLUSH, int, fsync, (int file), file)
FILE_CALL(FLUSH, int, fdatasync, (int file), file)
FILE_CALL(FLUSH, int, syncfs, (int file), file)

int ioctl(int file, unsigned long request, ...) {
  va_list rest;
  va_start(rest, request);
  void* argument = va_arg(rest, void*);
  va_end(rest);
  if ((request == FICLONE || request == FICLONERANGE) && StrikeFile(BYTES, "ioctl", file)) return -1;
  return REAL(ioctl)(file, request, argument);
}

PATH_CALL(ENTRY, rename, AT_FDCWD, to, (const char* from, const char* to), from, to)
PATH_CALL(ENTRY, renameat, toFolder, to, (int fromFolder, const char* from, int toFolder, const char* to),
          fromFolder, from, toFolder, to)
PATH_CALL(ENTRY, renameat2, toFolder, to,
          (int fromFolder, const char* from, int toFolder, const char* to, unsigned flags), fromFolder, from,
          toFolder, to, flags)
PATH_CALL(ENTRY, link, AT_FDCWD, to, (const char* from, const char* to), from, to)
PATH_CALL(ENTRY, linkat, toFolder, to,
          (int fromFolder, const char* from, int toFolder, const char* to, int flags), fromFolder, from,
          toFolder, to, flags)
PATH_CALL(ENTRY, symlink, AT_FDCWD, path, (const char* to, const char* path), to, path)
PATH_CALL(ENTRY, symlinkat, folder, path, (const char* to, int folder, const char* path), to, folder, path)
PATH_CALL(ENTRY, mkdir, AT_FDCWD, path, (const char* path, mode_t mode), path, mode)
PATH_CALL(ENTRY, mkdirat, folder, path, (int folder, const char* path, mode_t mode), folder, path, mode)
PATH_CALL(CHANGE, unlink, AT_FDCWD, path, (const char* path), path)
PATH_CALL(CHANGE, unlinkat, folder, path, (int folder, const char* path, int flags), folder, path, flags)
PATH_CALL(CHANGE, remove, AT_FDCWD, path, (const char* path), path)
PATH_CALL(CHANGE, rmdir, AT_FDCWD, path, (const char* path), path)
PATH_CALL(CHANGE, chmod, AT_FDCWD, path, (const char* path, mode_t mode), path, mode)
PATH_CALL(CHANGE, fchmodat, folder, path, (int folder, const char* path, mode_t mode, int flags), folder,
          path, mode, flags)
PATH_CALL(CHANGE, truncate, AT_FDCWD, path, (const char* path, off_t size), path, size)
PATH_CALL(CHANGE, truncate64, AT_FDCWD, path, (const char* path, off64_t size), path, size)
PATH_CALL(CHANGE, utimensat, folder, path,
          (int folder, const char* path, const struct timespec times[2], int flags), folder, path, times,
          flags)
