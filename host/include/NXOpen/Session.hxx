#ifndef NXOpen_SESSION_HXX_INCLUDED
#define NXOpen_SESSION_HXX_INCLUDED

#include <NXOpen/NXString.hxx>
#include <NXOpen/Callback.hxx>
#include <NXOpen/BaseSession.hxx>
#include <NXOpen/libnxopencpp_exports.hxx>

namespace NXOpen
{
    class PartCollection;
    class ListingWindow;
    class Update;

    // The one NX session.
    class NXOPENCPPEXPORT Session : public NXOpen::BaseSession
    {
    public:
        enum LibraryUnloadOption
        {
            LibraryUnloadOptionImmediately = 1,
            LibraryUnloadOptionExplicitly,
            LibraryUnloadOptionAtTermination
        };

        static NXOpen::Session *GetSession();
        // The loaded parts (include NXOpen/PartCollection.hxx to use them).
        NXOpen::PartCollection *Parts();
        // The value of an NX environment variable; empty when it is not defined.
        NXString GetEnvironmentVariableValue(const NXString &envVaribable);
        NXString GetEnvironmentVariableValue(const char *envVaribable);
        NXOpen::ListingWindow *ListingWindow();
        NXOpen::Update *UpdateManager();

    protected:
        Session();
        virtual ~Session();
    };
}

#endif
