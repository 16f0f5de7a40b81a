// Replacing a file as a whole or not at all: a new file beside it, synchronised, then renamed over it.
#include "host/io/atomic_save.h"

#include "host/base/progress.h"
#include "host/base/text.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace korvex {

namespace {

constexpr int kLinksToFollow = 40;
constexpr int kNamesToTry = 100;
constexpr std::size_t kChunk = std::size_t{4} << 20;  // bytes that are written at once

std::string folderOf(const std::string& file) {
    const std::size_t slash = file.rfind('/');
    return slash == file.npos ? "." : slash == 0 ? "/" : file.substr(0, slash);
}

std::string baseName(const std::string& file) {
    const std::size_t slash = file.rfind('/');
    return slash == file.npos ? file : file.substr(slash + 1);
}

std::string joined(const std::string& folder, const std::string& name) {
    return folder == "." ? name : folder == "/" ? "/" + name : folder + "/" + name;
}

/// The file that a chain of symbolic links ends at, which need not exist.
std::string targetOf(std::string file) {
    for (int i = 0; i < kLinksToFollow; ++i) {
        char link[4096];
        const ssize_t size = ::readlink(file.c_str(), link, sizeof link);
        if (size <= 0) {
            break;
        }
        const std::string target(link, static_cast<std::size_t>(size));
        file = target.front() == '/' ? target : joined(folderOf(file), target);
    }
    return file;
}

std::wstring remedyFor(int error) {
    switch (error) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG: return L" Make room on the disk, or save in another folder (SAVEAS).";
    case EACCES:
    case EPERM: return L" Save under another name or in another folder (SAVEAS), or have it made writable.";
    case EROFS: return L" Nothing can be written there: save in another folder (SAVEAS).";
    case ENOENT: return L" Make the folder again, or save in another one (SAVEAS).";
    case EIO: return L" Check the disk, and save in another folder (SAVEAS).";
    default: return L" Save under another name or in another folder (SAVEAS).";
    }
}

/// One replacement; what is left over of a failed one goes with it.
class Replacement {
public:
    explicit Replacement(std::string file) : m_file(std::move(file)) {}
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;
    ~Replacement() {
        if (m_descriptor != -1) {
            ::close(m_descriptor);
        }
        if (!m_temporary.empty()) {
            ::unlink(m_temporary.c_str());
        }
    }

    bool run(std::string_view bytes) {
        return examine() && create() && write(bytes) && keepBackup() && replace();
    }
    bool isCancelled() const { return m_isCancelled; }
    /// What went wrong, with the system's reason, and what to do about it.
    const std::wstring& reason() const { return m_reason; }

private:
    bool fail(const wchar_t* what, const std::string& file) {
        const int error = errno;
        m_reason = std::wstring(what) + L" \"" + fromFileName(file) + L"\": " +
                   fromUtf8(std::strerror(error)) + L"." + remedyFor(error);
        return false;
    }

    /// The file that is there now, if any: it must be an ordinary one that may be written.
    bool examine() {
        struct stat status {};
        if (::stat(m_file.c_str(), &status) != 0) {
            return errno == ENOENT || fail(L"cannot look at", m_file);
        }
        if (!S_ISREG(status.st_mode)) {
            errno = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
            return fail(L"cannot write", m_file);
        }
        if (::eaccess(m_file.c_str(), W_OK) != 0) {
            return fail(L"cannot write", m_file);
        }
        m_exists = true;
        m_mode = status.st_mode & 07777;
        m_user = status.st_uid;
        m_group = status.st_gid;
        return true;
    }

    /// A name beside the file that nobody has.
    std::string freeName(int attempt) const {
        return joined(folderOf(m_file), "." + baseName(m_file).substr(0, 200) + "." +
                                            std::to_string(::getpid()) + "-" + std::to_string(attempt) +
                                            ".tmp");
    }

    bool create() {
        std::string name;
        const mode_t access = m_exists ? 0600 : 0666;  // until the present file's permissions are given
        for (int i = 0; i < kNamesToTry && m_descriptor == -1; ++i) {
            name = freeName(i);
            m_descriptor = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, access);
            if (m_descriptor == -1 && errno != EEXIST) {
                break;
            }
        }
        if (m_descriptor == -1) {
            return fail(L"cannot create", name);
        }
        m_temporary = name;
        if (m_exists) {
            takeOwnership();
        }
        return true;
    }

    /// Gives the new file owner, group and permissions of the present one. Only the superuser may give files
    /// away, and others may choose a group that they are in; otherwise the file becomes the saver's own. Then
    /// nobody may do more with it than before: who was in the group or was the owner counts as the others
    /// now.
    void takeOwnership() {
        constexpr uid_t kSameUser = static_cast<uid_t>(-1);
        constexpr gid_t kSameGroup = static_cast<gid_t>(-1);
        const bool hasGroup = ::fchown(m_descriptor, kSameUser, m_group) == 0;
        const bool hasUser = ::fchown(m_descriptor, m_user, kSameGroup) == 0;
        mode_t ofUser = m_mode >> 6U & 7U;
        mode_t ofGroup = m_mode >> 3U & 7U;
        mode_t ofOthers = m_mode & 7U;
        if (!hasGroup) {
            ofGroup = ofOthers = ofGroup & ofOthers;
        }
        if (!hasUser) {
            ofGroup &= ofUser;
            ofOthers &= ofUser;
        }
        const mode_t ids = hasUser && hasGroup ? m_mode & 07000U : 0;
        ::fchmod(m_descriptor, ids | ofUser << 6U | ofGroup << 3U | ofOthers);
    }

    bool write(std::string_view bytes) {
        ProgressScope progress(L"Writing the file", static_cast<long long>(bytes.size()));
        const std::size_t size = bytes.size();
        while (!bytes.empty()) {
            if (giveUp(progress, size - bytes.size())) {
                return false;
            }
            const ssize_t written = ::write(m_descriptor, bytes.data(), std::min(bytes.size(), kChunk));
            if (written < 0 && errno != EINTR) {
                return fail(L"cannot write", m_temporary);
            }
            bytes.remove_prefix(written < 0 ? 0 : static_cast<std::size_t>(written));
        }
        if (::fsync(m_descriptor) != 0) {
            return fail(L"cannot write", m_temporary);
        }
        const int closed = ::close(m_descriptor);
        m_descriptor = -1;
        return closed == 0 ? !giveUp(progress, size) : fail(L"cannot write", m_temporary);
    }

    bool giveUp(ProgressScope& progress, std::size_t written) {
        m_isCancelled = !progress.step(static_cast<long long>(written));
        return m_isCancelled;
    }

    /// The previous file gets a second name, so that there is a file under the first at every moment. Where
    /// the file system has no such thing, it is renamed.
    bool keepBackup() {
        if (!m_exists) {
            return true;
        }
        m_backup = backupName(m_file);
        if (m_backup == m_file) {
            m_backup += ".bak";
        }
        const std::string link = m_temporary + ".bak";
        if (::link(m_file.c_str(), link.c_str()) == 0) {
            const bool renamed =
                ::rename(link.c_str(), m_backup.c_str()) == 0 || fail(L"cannot replace", m_backup);
            ::unlink(link.c_str());  // still there when it failed or was a name of the backup already
            return renamed;
        }
        m_moved = ::rename(m_file.c_str(), m_backup.c_str()) == 0;
        return m_moved || fail(L"cannot replace", m_backup);
    }

    bool replace() {
        if (::rename(m_temporary.c_str(), m_file.c_str()) != 0) {
            const bool failed = fail(L"cannot replace", m_file);
            if (m_moved) {
                ::rename(m_backup.c_str(), m_file.c_str());
            }
            return failed;
        }
        m_temporary.clear();
        // The names are on disk once the folder is; some file systems cannot do that for folders.
        const int folder = ::open(folderOf(m_file).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (folder != -1) {
            ::fsync(folder);
            ::close(folder);
        }
        return true;
    }

    std::string m_file;
    std::string m_temporary;
    std::string m_backup;
    std::wstring m_reason;
    int m_descriptor = -1;
    bool m_exists = false;
    bool m_isCancelled = false;
    bool m_moved = false;
    mode_t m_mode = 0;
    uid_t m_user = 0;
    gid_t m_group = 0;
};

}  // namespace

std::string backupName(const std::string& file) {
    const std::string name = baseName(file);
    const std::size_t point = name.rfind('.');
    const std::string stem = point == name.npos || point == 0 ? name : name.substr(0, point);
    return file.substr(0, file.size() - name.size()) + stem + ".bak";
}

Hx::ErrorStatus saveAtomically(const std::wstring& path, std::string_view bytes, std::wstring& error) {
    Replacement replacement(targetOf(toFileName(path)));
    if (replacement.run(bytes)) {
        error.clear();
        return Hx::eOk;
    }
    if (replacement.isCancelled()) {
        error = L"cancelled: the file is as it was.";
        return Hx::eCancelled;
    }
    error = L"the file is as it was: " + replacement.reason();
    return Hx::eFileAccessErr;
}

}  // namespace korvex
