#ifndef VARNO_APPS_VARNO_SESSION_SHAREDLIBRARY_H
#define VARNO_APPS_VARNO_SESSION_SHAREDLIBRARY_H

namespace varno {

/// A library of the system, loaded while the program runs, so that the program starts where it is missing. It
/// stays loaded: libraries with threads of their own cannot be unloaded safely. [main]
class SharedLibrary {
public:
    /// @param name for instance "libjack.so.0" @throws SoundUnavailable where it is not installed
    explicit SharedLibrary(const char* name);

    /// Takes the address of a function of that name, in the library or in one that it needs.
    /// @throws SoundUnavailable where there is none
    template<class Function>
    void find(const char* name, Function*& function) const {
        function = reinterpret_cast<Function*>(require(name));
    }
    /// The same for a function that is not needed: null where there is none.
    template<class Function>
    void findOptional(const char* name, Function*& function) const {
        function = reinterpret_cast<Function*>(address(name));
    }

private:
    void* address(const char* name) const;
    void* require(const char* name) const;

    const char* mName;
    void* mHandle;
};

} // namespace varno

#endif
