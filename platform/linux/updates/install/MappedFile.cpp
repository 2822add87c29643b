#include "platform/linux/updates/install/MappedFile.h"

#include <sys/mman.h>

namespace glimmerly {

Result<MappedFile> MappedFile::of(const FileDescriptor& file, std::size_t size) {
    void* address = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file.get(), 0);
    if (address == MAP_FAILED)
        return posixFailure("Reading the update");
    return MappedFile({static_cast<const std::byte*>(address), size});
}

MappedFile::~MappedFile() {
    if (!bytes_.empty())
        ::munmap(const_cast<std::byte*>(bytes_.data()), bytes_.size());
}

} // namespace glimmerly
