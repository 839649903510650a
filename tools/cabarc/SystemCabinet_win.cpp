// The only file of cabarc that calls Windows itself.
#include <windows.h>
// fdi.h needs windows.h before it.
#include <fdi.h>

#include <charconv>
#include <cstdlib>
#include <exception>
#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <set>

#include "tools/cabarc/MemberName.h"
#include "tools/cabarc/SystemCabinet.h"
#include "tools/shared/Handle.h"
#include "tools/shared/HostText.h"
#include "tools/shared/InputFile.h"
#include "tools/shared/ToolError.h"

namespace tools::cabarc {

namespace {

constexpr INT_PTR kFailed = -1;

// Returns the method of a member's folder, without its parameters.
int MethodOf(const CabinetDirectory& directory, std::size_t index) {
    return directory.Folders.at(directory.Members[index].Folder).Type & tcompMASK_TYPE;
}

// One run of the library over one cabinet, from which it unpacks the members of one method. No exception may
// pass through the library: the callbacks keep it here, make the library stop, and it is thrown again
// outside.
struct Session {
    const std::filesystem::path& File;
    const std::string& Label;
    const CabinetDirectory& Directory;
    MemberReceiver& Receiver;
    int Method;  // as a folder's type names it, without parameters
    std::exception_ptr Failure;
    std::size_t Announced = 0;  // number of members that the library has come to
    std::uint64_t Written = 0;  // bytes of the member that is being unpacked

    const CabinetMember& Current() const { return Directory.Members[Announced - 1]; }

    [[noreturn]] void Damaged() const {
        const std::string where = Announced == 0 ? "" : " at the member " + MemberNameUtf8(Current());
        throw ToolError(Label + ": this cabinet is damaged" + where);
    }

    template <typename Result, typename Work>
    Result Guarded(Result onFailure, Work work) noexcept {
        try {
            return work();
        } catch (...) {
            if (!Failure) Failure = std::current_exception();
            return onFailure;
        }
    }
};

// What the library takes for a file: the cabinet, which it may open several times, or the member that is
// being unpacked.
struct OpenFile {
    Session* Owner;
    std::optional<InputFile> Cabinet;
};

OpenFile* OpenFileOf(INT_PTR handle) {
    return reinterpret_cast<OpenFile*>(handle);
}

void* DIAMONDAPI Allocate(ULONG size) {
    return std::malloc(size);
}

void DIAMONDAPI Release(void* memory) {
    std::free(memory);
}

// The library passes only a name to this callback, so the name of the cabinet is the session's address in
// digits.
INT_PTR DIAMONDAPI Open(char* name, int, int) {
    std::uintptr_t address = 0;
    const std::string_view text(name);
    if (std::from_chars(text.data(), text.data() + text.size(), address).ec != std::errc()) return kFailed;
    auto* const session = reinterpret_cast<Session*>(address);
    return session->Guarded(kFailed, [&] {
        auto stream = std::make_unique<OpenFile>();
        stream->Owner = session;
        stream->Cabinet.emplace(session->File);
        return reinterpret_cast<INT_PTR>(stream.release());
    });
}

UINT DIAMONDAPI Read(INT_PTR handle, void* memory, UINT size) {
    OpenFile& stream = *OpenFileOf(handle);
    return stream.Owner->Guarded(static_cast<UINT>(kFailed), [&] {
        return static_cast<UINT>(stream.Cabinet->Read({static_cast<std::uint8_t*>(memory), size}));
    });
}

UINT DIAMONDAPI Write(INT_PTR handle, void* memory, UINT size) {
    Session& session = *OpenFileOf(handle)->Owner;
    return session.Guarded(static_cast<UINT>(kFailed), [&] {
        session.Written += size;
        if (session.Written > session.Current().Size) session.Damaged();
        session.Receiver.Write({static_cast<const std::uint8_t*>(memory), size});
        return size;
    });
}

int DIAMONDAPI Close(INT_PTR handle) {
    delete OpenFileOf(handle);
    return 0;
}

long DIAMONDAPI Seek(INT_PTR handle, long distance, int origin) {
    OpenFile& stream = *OpenFileOf(handle);
    return stream.Owner->Guarded(-1L, [&] {
        const std::uint64_t start = origin == SEEK_SET   ? 0
                                    : origin == SEEK_CUR ? stream.Cabinet->Position()
                                                         : stream.Cabinet->Size();
        // A cabinet has less than 2 GiB, so that a place in it fits into a long.
        const std::int64_t place = static_cast<std::int64_t>(start) + distance;
        if (place < 0 || place > std::numeric_limits<long>::max()) return -1L;
        stream.Cabinet->Seek(static_cast<std::uint64_t>(place));
        return static_cast<long>(place);
    });
}

// Returns the handle that the member's bytes go to, or 0 to skip it.
INT_PTR BeginMember(Session& session, const FDINOTIFICATION& notice) {
    // The library must see the members that were read and checked before: the file may have changed.
    if (session.Announced == session.Directory.Members.size()) session.Damaged();
    const CabinetMember& member = session.Directory.Members[session.Announced++];
    if (member.Name != notice.psz1 || member.Size != static_cast<std::uint32_t>(notice.cb)) session.Damaged();
    session.Written = 0;
    const std::size_t index = session.Announced - 1;
    if (MethodOf(session.Directory, index) != session.Method || !session.Receiver.Begin(index)) return 0;
    auto stream = std::make_unique<OpenFile>();
    stream->Owner = &session;
    return reinterpret_cast<INT_PTR>(stream.release());
}

INT_PTR EndMember(Session& session, const FDINOTIFICATION& notice) {
    Close(notice.hf);
    if (session.Written != session.Current().Size) session.Damaged();
    session.Receiver.End();
    return TRUE;
}

INT_PTR DIAMONDAPI Notify(FDINOTIFICATIONTYPE type, FDINOTIFICATION* notice) {
    Session& session = *static_cast<Session*>(notice->pv);
    return session.Guarded(kFailed, [&]() -> INT_PTR {
        switch (type) {
            case fdintCOPY_FILE:
                return BeginMember(session, *notice);
            case fdintCLOSE_FILE_INFO:
                return EndMember(session, *notice);
            case fdintPARTIAL_FILE:
            case fdintNEXT_CABINET:
                return kFailed;  // sets of cabinets have been rejected before
            default:
                return 0;
        }
    });
}

// The cabinet library of the system's folder. It is loaded by its full path: if it were imported, Windows
// would take a file of its name that lies beside the program. The path also works on a Windows 7 without
// updates, which cannot be restricted to one folder.
class Library {
 public:
    Library() : module_(Load()) {
        Create = Find<decltype(FDICreate)>("FDICreate");
        Copy = Find<decltype(FDICopy)>("FDICopy");
        Destroy = Find<decltype(FDIDestroy)>("FDIDestroy");
    }

    decltype(FDICreate)* Create;
    decltype(FDICopy)* Copy;
    decltype(FDIDestroy)* Destroy;

 private:
    struct Module {
        using Value = HMODULE;
        static Value None() { return nullptr; }
        static void Close(Value module) { FreeLibrary(module); }
    };

    static UniqueHandle<Module> Load() {
        std::wstring file(MAX_PATH, L'\0');
        file.resize(GetSystemDirectoryW(file.data(), MAX_PATH));
        UniqueHandle<Module> module(
            LoadLibraryExW((file + L"\\cabinet.dll").c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH));
        if (!module) throw ToolError("cabinet.dll: cannot be loaded: " + SystemReason(GetLastError()));
        return module;
    }

    template <typename Function>
    Function* Find(const char* name) const {
        auto* const found =
            reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module_.Get(), name)));
        if (found == nullptr) throw ToolError(std::string("cabinet.dll: has no function ") + name);
        return found;
    }

    UniqueHandle<Module> module_;
};

void RunLibrary(const Library& library, Session& session) {
    ERF error{};
    const std::unique_ptr<void, decltype(FDIDestroy)*> context(
        library.Create(Allocate, Release, Open, Read, Write, Close, Seek, cpuUNKNOWN, &error),
        library.Destroy);
    if (!context) throw std::bad_alloc();
    std::string name = std::to_string(reinterpret_cast<std::uintptr_t>(&session));
    std::string folder;
    const bool isDone =
        library.Copy(context.get(), name.data(), folder.data(), 0, Notify, nullptr, &session) != FALSE;
    if (session.Failure) std::rethrow_exception(session.Failure);
    if (!isDone && error.erfOper == FDIERROR_ALLOC_FAIL) throw std::bad_alloc();
    if (!isDone && error.erfOper == FDIERROR_BAD_COMPR_TYPE)
        throw ToolError(session.Label + ": this cabinet is packed by a method that the system does not know");
    if (!isDone || session.Announced != session.Directory.Members.size()) session.Damaged();
}

}  // namespace

void RequireUnpacking() {}

void UnpackCabinet(const std::filesystem::path& file, const std::string& label,
                   const CabinetDirectory& directory, MemberReceiver& receiver) {
    // Wine's library takes the state of one method for that of another when folders of one cabinet differ in
    // it, and crashes. So each run unpacks one method; nearly every cabinet has only one.
    std::set<int> methods;
    for (std::size_t i = 0; i < directory.Members.size(); ++i) methods.insert(MethodOf(directory, i));
    const Library library;
    for (const int method : methods) {
        Session session{file, label, directory, receiver, method, nullptr};
        RunLibrary(library, session);
    }
}

std::string MemberNameUtf8(const CabinetMember& member) {
    const std::string& name = member.Name;
    if ((member.Attributes & kNameIsUtf8) != 0 || name.empty()) return name;
    const int size = static_cast<int>(name.size());
    std::wstring wide(name.size(), L'\0');
    const int count = MultiByteToWideChar(CP_ACP, 0, name.data(), size, wide.data(), size);
    std::string text(static_cast<std::size_t>(count) * 3, '\0');
    const int bytes =
        WideCharToMultiByte(CP_UTF8, 0, wide.data(), count, text.data(), count * 3, nullptr, nullptr);
    text.resize(static_cast<std::size_t>(bytes));
    return text;
}

}  // namespace tools::cabarc
