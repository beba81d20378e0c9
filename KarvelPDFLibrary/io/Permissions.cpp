#include "KarvelPDFLibrary/io/Permissions.h"

#include "KarvelPDFLibrary/io/FileDescriptor.h"

#include <acl/libacl.h>
#include <cerrno>
#include <memory>
#include <mutex>
#include <string>
#include <sys/acl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <type_traits>
#include <unistd.h>

namespace karvel::io {

namespace {

struct FreeList {
    void operator()(acl_t list) const { acl_free(list); }
};
using List = std::unique_ptr<std::remove_pointer_t<acl_t>, FreeList>;

constexpr mode_t groupBits = S_IRWXG;

// The list of an open file, if it says more than the mode.
List listOf(int descriptor)
{
    // Where there is none, libacl would make one of the mode.
    if (fgetxattr(descriptor, "system.posix_acl_access", nullptr, 0) < 0 && errno == ENODATA) {
        return {};
    }
    List list(acl_get_fd(descriptor));
    if (!list && errno == EBADF) { // a descriptor that is a mere path
        list.reset(
            acl_get_file(("/proc/self/fd/" + std::to_string(descriptor)).c_str(), ACL_TYPE_ACCESS));
    }
    return list && acl_equiv_mode(list.get(), nullptr) == 1 ? std::move(list) : List();
}

// What the group of the file may do by its list.
mode_t groupModeIn(acl_t list)
{
    acl_entry_t entry = nullptr;
    for (int more = acl_get_entry(list, ACL_FIRST_ENTRY, &entry); more == 1;
         more = acl_get_entry(list, ACL_NEXT_ENTRY, &entry)) {
        acl_tag_t tag = ACL_UNDEFINED_TAG;
        acl_permset_t set = nullptr;
        if (acl_get_tag_type(entry, &tag) == 0 && tag == ACL_GROUP_OBJ &&
            acl_get_permset(entry, &set) == 0) {
            return (acl_get_perm(set, ACL_READ) == 1 ? S_IRGRP : 0U) |
                   (acl_get_perm(set, ACL_WRITE) == 1 ? S_IWGRP : 0U) |
                   (acl_get_perm(set, ACL_EXECUTE) == 1 ? S_IXGRP : 0U);
        }
    }
    return 0;
}

// A group that hasn't got the file before is like everybody.
mode_t withoutGroup(mode_t mode)
{
    return mode & ~(groupBits & ~((mode & S_IRWXO) << 3U));
}

} // namespace

mode_t usualMode()
{
    // The system tells it only by setting it; meanwhile it is the strictest.
    static std::mutex one;
    const std::lock_guard<std::mutex> lock(one);
    const mode_t mask = umask(077);
    umask(mask);
    return 0666 & ~mask;
}

mode_t modeOf(int descriptor)
{
    struct stat status = {};
    return fstat(descriptor, &status) == 0 ? modeOf(descriptor, status.st_mode) : 0600;
}

mode_t modeOf(int descriptor, mode_t known)
{
    const mode_t mode = known & 0777;
    const List list = listOf(descriptor);
    return list ? mode & (~groupBits | groupModeIn(list.get())) : mode;
}

int handOnPermissions(const KnownFile& from, const KnownFile& to, mode_t most, HandedOn& done)
{
    const uid_t owner = from.status.st_uid;
    const gid_t group = from.status.st_gid;
    const bool isSame = owner == to.status.st_uid && group == to.status.st_gid;
    done = HandedOn::All;
    mode_t mode = from.status.st_mode & most & 0777;
    if (!isSame && fchown(to.descriptor, owner, group) != 0) {
        done = HandedOn::Mode;
        if (fchown(to.descriptor, static_cast<uid_t>(-1), group) != 0) {
            if (errno != EPERM) {
                return errno;
            }
            mode = withoutGroup(mode);
        }
    }
    List list = listOf(from.descriptor);
    if (!list && listOf(to.descriptor)) { // one that the folder gives to new files
        list.reset(acl_from_mode(mode));
    }
    if (list && acl_set_fd(to.descriptor, list.get()) != 0) {
        return errno;
    }
    return fchmod(to.descriptor, mode) == 0 ? 0 : errno;
}

} // namespace karvel::io
