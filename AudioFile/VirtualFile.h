#ifndef VARNO_AUDIOFILE_VIRTUALFILE_H
#define VARNO_AUDIOFILE_VIRTUALFILE_H

#include <memory>
#include <sndfile.h>

namespace varno {

struct SndfileCloser {
    void operator()(SNDFILE* file) const { sf_close(file); }
};

/// Owns an open file of libsndfile and closes it.
using SndfileOwner = std::unique_ptr<SNDFILE, SndfileCloser>;

/// What libsndfile reads or writes in place of a file: it calls the private methods, which do not throw since
/// it is C. Lengths and places are in bytes. One thread at a time.
class VirtualFile {
public:
    VirtualFile(const VirtualFile&) = delete;
    VirtualFile& operator=(const VirtualFile&) = delete;

    /// Opens the file through this object, which must outlive the result. @return null where libsndfile does
    /// not know the file or refuses
    SndfileOwner open(SF_INFO& info);

protected:
    /// @param mode SFM_READ or SFM_WRITE
    explicit VirtualFile(int mode)
        : mMode(mode) {}
    ~VirtualFile() = default;

    /// The place that seek() is called for.
    sf_count_t placeOf(sf_count_t offset, int whence) noexcept;

private:
    static VirtualFile& of(void* user) { return *static_cast<VirtualFile*>(user); }

    virtual sf_count_t length() noexcept = 0;

    /// @param whence SEEK_SET, SEEK_CUR or SEEK_END @return the new position, below 0 where that fails
    virtual sf_count_t seek(sf_count_t offset, int whence) noexcept = 0;

    /// @return what has been read; none of a file that is only written
    virtual sf_count_t read(void* /*data*/, sf_count_t /*count*/) noexcept { return 0; }

    /// @return what has been written; none of a file that is only read
    virtual sf_count_t write(const void* /*data*/, sf_count_t /*count*/) noexcept { return 0; }

    virtual sf_count_t tell() noexcept = 0;

    int mMode;
};

} // namespace varno

#endif
