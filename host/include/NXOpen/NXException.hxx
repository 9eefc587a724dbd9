#ifndef NXOpen_NXEXCEPTION_HXX_INCLUDED
#define NXOpen_NXEXCEPTION_HXX_INCLUDED

#include <exception>
#include <string>
#include <NXOpen/libnxopencpp_exports.hxx>

namespace NXOpen
{
    // The exception every NX Open call throws on failure. Derives publicly from std::exception,
    // so a handler for std::exception catches NX errors too; what() is Message().
    class NXOPENCPPEXPORT NXException : public std::exception
    {
    public:
        NXException(const NXException &other);
        virtual ~NXException() throw();

        // An exception for an NX error code.
        static NXOpen::NXException Create(int errorCode);
        // An exception with a message and error code 0.
        static NXOpen::NXException Create(const char *message);
        static void ThrowBadTagException();
        static void ThrowUnexpectedSuccess();

        const char *Message() const;
        const char *GetMessage() const;
        virtual const char *what() const throw();
        int ErrorCode() const;
        int GetErrorCode() const;
        void AssertErrorCode(int code) const;

    private:
        NXException();
        explicit NXException(int errorCode);
        explicit NXException(const char *message);
        NXException &operator=(const NXException &other);

        std::string m_message;
        int m_errorCode;
    };
}

#endif
