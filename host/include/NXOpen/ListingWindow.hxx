#ifndef NXOpen_LISTINGWINDOW_HXX_INCLUDED
#define NXOpen_LISTINGWINDOW_HXX_INCLUDED

#include <NXOpen/NXString.hxx>
#include <NXOpen/Callback.hxx>
#include <NXOpen/TaggedObject.hxx>
#include <NXOpen/libnxopencpp_exports.hxx>

namespace NXOpen
{
    // NX's information window.
    class NXOPENCPPEXPORT ListingWindow
    {
    public:
        void Open();
        void Close();
        bool IsOpen();
        void WriteLine(const NXString &msg);
        void WriteLine(const char *msg);
        tag_t Tag() const;

    protected:
        ListingWindow();
        virtual ~ListingWindow();

    private:
        ListingWindow(const ListingWindow &);
        ListingWindow &operator=(const ListingWindow &);
    };
}

#endif
