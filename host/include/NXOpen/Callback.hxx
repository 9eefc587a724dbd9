#ifndef NXOpen_CALLBACK_HXX_INCLUDED
#define NXOpen_CALLBACK_HXX_INCLUDED

#include <vector>
#include <typeinfo>

// Callback objects of NX Open: a handler is a free function or an object with a non-const
// member function. Registration functions keep a Clone() of the object they are given, so the
// temporary that make_callback returns is enough.

namespace NXOpen
{
    class BaseCallback
    {
    public:
        virtual ~BaseCallback() {}
        virtual NXOpen::BaseCallback *Clone() const = 0;
        virtual bool Equals(const NXOpen::BaseCallback &other) const = 0;
    };

    template <class Result>
    class Callback0 : public BaseCallback
    {
    public:
        typedef Result ResultType;
        virtual ~Callback0() {}
        virtual Result operator()() const = 0;
    };

    template <class Result>
    class Callback0Function : public Callback0<Result>
    {
    public:
        typedef Result (*FunctionType)();
        Callback0Function(FunctionType fn) : m_fn(fn) {}
        virtual Result operator()() const { return m_fn(); }
        virtual NXOpen::BaseCallback *Clone() const { return new Callback0Function(*this); }
        virtual bool Equals(const NXOpen::BaseCallback &other) const
        {
            const Callback0Function *o = dynamic_cast<const Callback0Function *>(&other);
            return o != 0 && o->m_fn == m_fn;
        }

    private:
        FunctionType m_fn;
    };

    template <class T, class Result>
    class Callback0MemberFunction : public Callback0<Result>
    {
    public:
        typedef Result (T::*FunctionType)();
        Callback0MemberFunction(T *object, FunctionType fn) : m_object(object), m_fn(fn) {}
        virtual Result operator()() const { return (m_object->*m_fn)(); }
        virtual NXOpen::BaseCallback *Clone() const { return new Callback0MemberFunction(*this); }
        virtual bool Equals(const NXOpen::BaseCallback &other) const
        {
            const Callback0MemberFunction *o = dynamic_cast<const Callback0MemberFunction *>(&other);
            return o != 0 && o->m_object == m_object && o->m_fn == m_fn;
        }

    private:
        T *m_object;
        FunctionType m_fn;
    };

    template <class Result>
    class Callback0List : public Callback0<Result>
    {
    public:
        Callback0List() {}
        Callback0List(const Callback0List &other) : Callback0<Result>()
        {
            for (std::size_t i = 0; i < other.m_list.size(); ++i)
                m_list.push_back(static_cast<Callback0<Result> *>(other.m_list[i]->Clone()));
        }
        virtual ~Callback0List()
        {
            for (std::size_t i = 0; i < m_list.size(); ++i)
                delete m_list[i];
        }
        void Add(const Callback0<Result> &cb)
        {
            m_list.push_back(static_cast<Callback0<Result> *>(cb.Clone()));
        }
        void Remove(const Callback0<Result> &cb)
        {
            for (std::size_t i = 0; i < m_list.size(); ++i)
                if (m_list[i]->Equals(cb))
                {
                    delete m_list[i];
                    m_list.erase(m_list.begin() + i);
                    return;
                }
        }
        // Calls every callback in order; the result is the last one's.
        virtual Result operator()() const
        {
            for (std::size_t i = 0; i + 1 < m_list.size(); ++i)
                (*m_list[i])();
            return (*m_list.back())();
        }
        virtual NXOpen::BaseCallback *Clone() const { return new Callback0List(*this); }
        virtual bool Equals(const NXOpen::BaseCallback &other) const { return &other == this; }

    private:
        Callback0List &operator=(const Callback0List &);
        std::vector<Callback0<Result> *> m_list;
    };

    template <class T, class Result>
    Callback0MemberFunction<T, Result> make_callback(T *object, Result (T::*fn)())
    {
        return Callback0MemberFunction<T, Result>(object, fn);
    }

    template <class Result>
    Callback0Function<Result> make_callback(Result (*fn)())
    {
        return Callback0Function<Result>(fn);
    }

    template <class Result, class Arg1>
    class Callback1 : public BaseCallback
    {
    public:
        typedef Result ResultType;
        typedef Arg1 Arg1Type;
        virtual ~Callback1() {}
        virtual Result operator()(Arg1 a1) const = 0;
    };

    template <class Result, class Arg1>
    class Callback1Function : public Callback1<Result, Arg1>
    {
    public:
        typedef Result (*FunctionType)(Arg1);
        Callback1Function(FunctionType fn) : m_fn(fn) {}
        virtual Result operator()(Arg1 a1) const { return m_fn(a1); }
        virtual NXOpen::BaseCallback *Clone() const { return new Callback1Function(*this); }
        virtual bool Equals(const NXOpen::BaseCallback &other) const
        {
            const Callback1Function *o = dynamic_cast<const Callback1Function *>(&other);
            return o != 0 && o->m_fn == m_fn;
        }

    private:
        FunctionType m_fn;
    };

    template <class T, class Result, class Arg1>
    class Callback1MemberFunction : public Callback1<Result, Arg1>
    {
    public:
        typedef Result (T::*FunctionType)(Arg1);
        Callback1MemberFunction(T *object, FunctionType fn) : m_object(object), m_fn(fn) {}
        virtual Result operator()(Arg1 a1) const { return (m_object->*m_fn)(a1); }
        virtual NXOpen::BaseCallback *Clone() const { return new Callback1MemberFunction(*this); }
        virtual bool Equals(const NXOpen::BaseCallback &other) const
        {
            const Callback1MemberFunction *o = dynamic_cast<const Callback1MemberFunction *>(&other);
            return o != 0 && o->m_object == m_object && o->m_fn == m_fn;
        }

    private:
        T *m_object;
        FunctionType m_fn;
    };

    template <class Result, class Arg1>
    class Callback1List : public Callback1<Result, Arg1>
    {
    public:
        Callback1List() {}
        Callback1List(const Callback1List &other) : Callback1<Result, Arg1>()
        {
            for (std::size_t i = 0; i < other.m_list.size(); ++i)
                m_list.push_back(static_cast<Callback1<Result, Arg1> *>(other.m_list[i]->Clone()));
        }
        virtual ~Callback1List()
        {
            for (std::size_t i = 0; i < m_list.size(); ++i)
                delete m_list[i];
        }
        void Add(const Callback1<Result, Arg1> &cb)
        {
            m_list.push_back(static_cast<Callback1<Result, Arg1> *>(cb.Clone()));
        }
        void Remove(const Callback1<Result, Arg1> &cb)
        {
            for (std::size_t i = 0; i < m_list.size(); ++i)
                if (m_list[i]->Equals(cb))
                {
                    delete m_list[i];
                    m_list.erase(m_list.begin() + i);
                    return;
                }
        }
        // Calls every callback in order; the result is the last one's.
        virtual Result operator()(Arg1 a1) const
        {
            for (std::size_t i = 0; i + 1 < m_list.size(); ++i)
                (*m_list[i])(a1);
            return (*m_list.back())(a1);
        }
        virtual NXOpen::BaseCallback *Clone() const { return new Callback1List(*this); }
        virtual bool Equals(const NXOpen::BaseCallback &other) const { return &other == this; }

    private:
        Callback1List &operator=(const Callback1List &);
        std::vector<Callback1<Result, Arg1> *> m_list;
    };

    template <class T, class Result, class Arg1>
    Callback1MemberFunction<T, Result, Arg1> make_callback(T *object, Result (T::*fn)(Arg1))
    {
        return Callback1MemberFunction<T, Result, Arg1>(object, fn);
    }

    template <class Result, class Arg1>
    Callback1Function<Result, Arg1> make_callback(Result (*fn)(Arg1))
    {
        return Callback1Function<Result, Arg1>(fn);
    }

    template <class Result, class Arg1, class Arg2>
    class Callback2 : public BaseCallback
    {
    public:
        typedef Result ResultType;
        typedef Arg1 Arg1Type;
        typedef Arg2 Arg2Type;
        virtual ~Callback2() {}
        virtual Result operator()(Arg1 a1, Arg2 a2) const = 0;
    };

    template <class Result, class Arg1, class Arg2>
    class Callback2Function : public Callback2<Result, Arg1, Arg2>
    {
    public:
        typedef Result (*FunctionType)(Arg1, Arg2);
        Callback2Function(FunctionType fn) : m_fn(fn) {}
        virtual Result operator()(Arg1 a1, Arg2 a2) const { return m_fn(a1, a2); }
        virtual NXOpen::BaseCallback *Clone() const { return new Callback2Function(*this); }
        virtual bool Equals(const NXOpen::BaseCallback &other) const
        {
            const Callback2Function *o = dynamic_cast<const Callback2Function *>(&other);
            return o != 0 && o->m_fn == m_fn;
        }

    private:
        FunctionType m_fn;
    };

    template <class T, class Result, class Arg1, class Arg2>
    class Callback2MemberFunction : public Callback2<Result, Arg1, Arg2>
    {
    public:
        typedef Result (T::*FunctionType)(Arg1, Arg2);
        Callback2MemberFunction(T *object, FunctionType fn) : m_object(object), m_fn(fn) {}
        virtual Result operator()(Arg1 a1, Arg2 a2) const { return (m_object->*m_fn)(a1, a2); }
        virtual NXOpen::BaseCallback *Clone() const { return new Callback2MemberFunction(*this); }
        virtual bool Equals(const NXOpen::BaseCallback &other) const
        {
            const Callback2MemberFunction *o = dynamic_cast<const Callback2MemberFunction *>(&other);
            return o != 0 && o->m_object == m_object && o->m_fn == m_fn;
        }

    private:
        T *m_object;
        FunctionType m_fn;
    };

    template <class Result, class Arg1, class Arg2>
    class Callback2List : public Callback2<Result, Arg1, Arg2>
    {
    public:
        Callback2List() {}
        Callback2List(const Callback2List &other) : Callback2<Result, Arg1, Arg2>()
        {
            for (std::size_t i = 0; i < other.m_list.size(); ++i)
                m_list.push_back(static_cast<Callback2<Result, Arg1, Arg2> *>(other.m_list[i]->Clone()));
        }
        virtual ~Callback2List()
        {
            for (std::size_t i = 0; i < m_list.size(); ++i)
                delete m_list[i];
        }
        void Add(const Callback2<Result, Arg1, Arg2> &cb)
        {
            m_list.push_back(static_cast<Callback2<Result, Arg1, Arg2> *>(cb.Clone()));
        }
        void Remove(const Callback2<Result, Arg1, Arg2> &cb)
        {
            for (std::size_t i = 0; i < m_list.size(); ++i)
                if (m_list[i]->Equals(cb))
                {
                    delete m_list[i];
                    m_list.erase(m_list.begin() + i);
                    return;
                }
        }
        // Calls every callback in order; the result is the last one's.
        virtual Result operator()(Arg1 a1, Arg2 a2) const
        {
            for (std::size_t i = 0; i + 1 < m_list.size(); ++i)
                (*m_list[i])(a1, a2);
            return (*m_list.back())(a1, a2);
        }
        virtual NXOpen::BaseCallback *Clone() const { return new Callback2List(*this); }
        virtual bool Equals(const NXOpen::BaseCallback &other) const { return &other == this; }

    private:
        Callback2List &operator=(const Callback2List &);
        std::vector<Callback2<Result, Arg1, Arg2> *> m_list;
    };

    template <class T, class Result, class Arg1, class Arg2>
    Callback2MemberFunction<T, Result, Arg1, Arg2> make_callback(T *object, Result (T::*fn)(Arg1, Arg2))
    {
        return Callback2MemberFunction<T, Result, Arg1, Arg2>(object, fn);
    }

    template <class Result, class Arg1, class Arg2>
    Callback2Function<Result, Arg1, Arg2> make_callback(Result (*fn)(Arg1, Arg2))
    {
        return Callback2Function<Result, Arg1, Arg2>(fn);
    }

    template <class Result, class Arg1, class Arg2, class Arg3>
    class Callback3 : public BaseCallback
    {
    public:
        typedef Result ResultType;
        typedef Arg1 Arg1Type;
        typedef Arg2 Arg2Type;
        typedef Arg3 Arg3Type;
        virtual ~Callback3() {}
        virtual Result operator()(Arg1 a1, Arg2 a2, Arg3 a3) const = 0;
    };

    template <class Result, class Arg1, class Arg2, class Arg3>
    class Callback3Function : public Callback3<Result, Arg1, Arg2, Arg3>
    {
    public:
        typedef Result (*FunctionType)(Arg1, Arg2, Arg3);
        Callback3Function(FunctionType fn) : m_fn(fn) {}
        virtual Result operator()(Arg1 a1, Arg2 a2, Arg3 a3) const { return m_fn(a1, a2, a3); }
        virtual NXOpen::BaseCallback *Clone() const { return new Callback3Function(*this); }
        virtual bool Equals(const NXOpen::BaseCallback &other) const
        {
            const Callback3Function *o = dynamic_cast<const Callback3Function *>(&other);
            return o != 0 && o->m_fn == m_fn;
        }

    private:
        FunctionType m_fn;
    };

    template <class T, class Result, class Arg1, class Arg2, class Arg3>
    class Callback3MemberFunction : public Callback3<Result, Arg1, Arg2, Arg3>
    {
    public:
        typedef Result (T::*FunctionType)(Arg1, Arg2, Arg3);
        Callback3MemberFunction(T *object, FunctionType fn) : m_object(object), m_fn(fn) {}
        virtual Result operator()(Arg1 a1, Arg2 a2, Arg3 a3) const { return (m_object->*m_fn)(a1, a2, a3); }
        virtual NXOpen::BaseCallback *Clone() const { return new Callback3MemberFunction(*this); }
        virtual bool Equals(const NXOpen::BaseCallback &other) const
        {
            const Callback3MemberFunction *o = dynamic_cast<const Callback3MemberFunction *>(&other);
            return o != 0 && o->m_object == m_object && o->m_fn == m_fn;
        }

    private:
        T *m_object;
        FunctionType m_fn;
    };

    template <class Result, class Arg1, class Arg2, class Arg3>
    class Callback3List : public Callback3<Result, Arg1, Arg2, Arg3>
    {
    public:
        Callback3List() {}
        Callback3List(const Callback3List &other) : Callback3<Result, Arg1, Arg2, Arg3>()
        {
            for (std::size_t i = 0; i < other.m_list.size(); ++i)
                m_list.push_back(static_cast<Callback3<Result, Arg1, Arg2, Arg3> *>(other.m_list[i]->Clone()));
        }
        virtual ~Callback3List()
        {
            for (std::size_t i = 0; i < m_list.size(); ++i)
                delete m_list[i];
        }
        void Add(const Callback3<Result, Arg1, Arg2, Arg3> &cb)
        {
            m_list.push_back(static_cast<Callback3<Result, Arg1, Arg2, Arg3> *>(cb.Clone()));
        }
        void Remove(const Callback3<Result, Arg1, Arg2, Arg3> &cb)
        {
            for (std::size_t i = 0; i < m_list.size(); ++i)
                if (m_list[i]->Equals(cb))
                {
                    delete m_list[i];
                    m_list.erase(m_list.begin() + i);
                    return;
                }
        }
        // Calls every callback in order; the result is the last one's.
        virtual Result operator()(Arg1 a1, Arg2 a2, Arg3 a3) const
        {
            for (std::size_t i = 0; i + 1 < m_list.size(); ++i)
                (*m_list[i])(a1, a2, a3);
            return (*m_list.back())(a1, a2, a3);
        }
        virtual NXOpen::BaseCallback *Clone() const { return new Callback3List(*this); }
        virtual bool Equals(const NXOpen::BaseCallback &other) const { return &other == this; }

    private:
        Callback3List &operator=(const Callback3List &);
        std::vector<Callback3<Result, Arg1, Arg2, Arg3> *> m_list;
    };

    template <class T, class Result, class Arg1, class Arg2, class Arg3>
    Callback3MemberFunction<T, Result, Arg1, Arg2, Arg3> make_callback(T *object, Result (T::*fn)(Arg1, Arg2, Arg3))
    {
        return Callback3MemberFunction<T, Result, Arg1, Arg2, Arg3>(object, fn);
    }

    template <class Result, class Arg1, class Arg2, class Arg3>
    Callback3Function<Result, Arg1, Arg2, Arg3> make_callback(Result (*fn)(Arg1, Arg2, Arg3))
    {
        return Callback3Function<Result, Arg1, Arg2, Arg3>(fn);
    }

    template <class Result, class Arg1, class Arg2, class Arg3, class Arg4>
    class Callback4 : public BaseCallback
    {
    public:
        typedef Result ResultType;
        typedef Arg1 Arg1Type;
        typedef Arg2 Arg2Type;
        typedef Arg3 Arg3Type;
        typedef Arg4 Arg4Type;
        virtual ~Callback4() {}
        virtual Result operator()(Arg1 a1, Arg2 a2, Arg3 a3, Arg4 a4) const = 0;
    };

    template <class Result, class Arg1, class Arg2, class Arg3, class Arg4>
    class Callback4Function : public Callback4<Result, Arg1, Arg2, Arg3, Arg4>
    {
    public:
        typedef Result (*FunctionType)(Arg1, Arg2, Arg3, Arg4);
        Callback4Function(FunctionType fn) : m_fn(fn) {}
        virtual Result operator()(Arg1 a1, Arg2 a2, Arg3 a3, Arg4 a4) const { return m_fn(a1, a2, a3, a4); }
        virtual NXOpen::BaseCallback *Clone() const { return new Callback4Function(*this); }
        virtual bool Equals(const NXOpen::BaseCallback &other) const
        {
            const Callback4Function *o = dynamic_cast<const Callback4Function *>(&other);
            return o != 0 && o->m_fn == m_fn;
        }

    private:
        FunctionType m_fn;
    };

    template <class T, class Result, class Arg1, class Arg2, class Arg3, class Arg4>
    class Callback4MemberFunction : public Callback4<Result, Arg1, Arg2, Arg3, Arg4>
    {
    public:
        typedef Result (T::*FunctionType)(Arg1, Arg2, Arg3, Arg4);
        Callback4MemberFunction(T *object, FunctionType fn) : m_object(object), m_fn(fn) {}
        virtual Result operator()(Arg1 a1, Arg2 a2, Arg3 a3, Arg4 a4) const { return (m_object->*m_fn)(a1, a2, a3, a4); }
        virtual NXOpen::BaseCallback *Clone() const { return new Callback4MemberFunction(*this); }
        virtual bool Equals(const NXOpen::BaseCallback &other) const
        {
            const Callback4MemberFunction *o = dynamic_cast<const Callback4MemberFunction *>(&other);
            return o != 0 && o->m_object == m_object && o->m_fn == m_fn;
        }

    private:
        T *m_object;
        FunctionType m_fn;
    };

    template <class Result, class Arg1, class Arg2, class Arg3, class Arg4>
    class Callback4List : public Callback4<Result, Arg1, Arg2, Arg3, Arg4>
    {
    public:
        Callback4List() {}
        Callback4List(const Callback4List &other) : Callback4<Result, Arg1, Arg2, Arg3, Arg4>()
        {
            for (std::size_t i = 0; i < other.m_list.size(); ++i)
                m_list.push_back(static_cast<Callback4<Result, Arg1, Arg2, Arg3, Arg4> *>(other.m_list[i]->Clone()));
        }
        virtual ~Callback4List()
        {
            for (std::size_t i = 0; i < m_list.size(); ++i)
                delete m_list[i];
        }
        void Add(const Callback4<Result, Arg1, Arg2, Arg3, Arg4> &cb)
        {
            m_list.push_back(static_cast<Callback4<Result, Arg1, Arg2, Arg3, Arg4> *>(cb.Clone()));
        }
        void Remove(const Callback4<Result, Arg1, Arg2, Arg3, Arg4> &cb)
        {
            for (std::size_t i = 0; i < m_list.size(); ++i)
                if (m_list[i]->Equals(cb))
                {
                    delete m_list[i];
                    m_list.erase(m_list.begin() + i);
                    return;
                }
        }
        // Calls every callback in order; the result is the last one's.
        virtual Result operator()(Arg1 a1, Arg2 a2, Arg3 a3, Arg4 a4) const
        {
            for (std::size_t i = 0; i + 1 < m_list.size(); ++i)
                (*m_list[i])(a1, a2, a3, a4);
            return (*m_list.back())(a1, a2, a3, a4);
        }
        virtual NXOpen::BaseCallback *Clone() const { return new Callback4List(*this); }
        virtual bool Equals(const NXOpen::BaseCallback &other) const { return &other == this; }

    private:
        Callback4List &operator=(const Callback4List &);
        std::vector<Callback4<Result, Arg1, Arg2, Arg3, Arg4> *> m_list;
    };

    template <class T, class Result, class Arg1, class Arg2, class Arg3, class Arg4>
    Callback4MemberFunction<T, Result, Arg1, Arg2, Arg3, Arg4> make_callback(T *object, Result (T::*fn)(Arg1, Arg2, Arg3, Arg4))
    {
        return Callback4MemberFunction<T, Result, Arg1, Arg2, Arg3, Arg4>(object, fn);
    }

    template <class Result, class Arg1, class Arg2, class Arg3, class Arg4>
    Callback4Function<Result, Arg1, Arg2, Arg3, Arg4> make_callback(Result (*fn)(Arg1, Arg2, Arg3, Arg4))
    {
        return Callback4Function<Result, Arg1, Arg2, Arg3, Arg4>(fn);
    }

    template <class Result, class Arg1, class Arg2, class Arg3, class Arg4, class Arg5>
    class Callback5 : public BaseCallback
    {
    public:
        typedef Result ResultType;
        typedef Arg1 Arg1Type;
        typedef Arg2 Arg2Type;
        typedef Arg3 Arg3Type;
        typedef Arg4 Arg4Type;
        typedef Arg5 Arg5Type;
        virtual ~Callback5() {}
        virtual Result operator()(Arg1 a1, Arg2 a2, Arg3 a3, Arg4 a4, Arg5 a5) const = 0;
    };

    template <class Result, class Arg1, class Arg2, class Arg3, class Arg4, class Arg5>
    class Callback5Function : public Callback5<Result, Arg1, Arg2, Arg3, Arg4, Arg5>
    {
    public:
        typedef Result (*FunctionType)(Arg1, Arg2, Arg3, Arg4, Arg5);
        Callback5Function(FunctionType fn) : m_fn(fn) {}
        virtual Result operator()(Arg1 a1, Arg2 a2, Arg3 a3, Arg4 a4, Arg5 a5) const { return m_fn(a1, a2, a3, a4, a5); }
        virtual NXOpen::BaseCallback *Clone() const { return new Callback5Function(*this); }
        virtual bool Equals(const NXOpen::BaseCallback &other) const
        {
            const Callback5Function *o = dynamic_cast<const Callback5Function *>(&other);
            return o != 0 && o->m_fn == m_fn;
        }

    private:
        FunctionType m_fn;
    };

    template <class T, class Result, class Arg1, class Arg2, class Arg3, class Arg4, class Arg5>
    class Callback5MemberFunction : public Callback5<Result, Arg1, Arg2, Arg3, Arg4, Arg5>
    {
    public:
        typedef Result (T::*FunctionType)(Arg1, Arg2, Arg3, Arg4, Arg5);
        Callback5MemberFunction(T *object, FunctionType fn) : m_object(object), m_fn(fn) {}
        virtual Result operator()(Arg1 a1, Arg2 a2, Arg3 a3, Arg4 a4, Arg5 a5) const { return (m_object->*m_fn)(a1, a2, a3, a4, a5); }
        virtual NXOpen::BaseCallback *Clone() const { return new Callback5MemberFunction(*this); }
        virtual bool Equals(const NXOpen::BaseCallback &other) const
        {
            const Callback5MemberFunction *o = dynamic_cast<const Callback5MemberFunction *>(&other);
            return o != 0 && o->m_object == m_object && o->m_fn == m_fn;
        }

    private:
        T *m_object;
        FunctionType m_fn;
    };

    template <class Result, class Arg1, class Arg2, class Arg3, class Arg4, class Arg5>
    class Callback5List : public Callback5<Result, Arg1, Arg2, Arg3, Arg4, Arg5>
    {
    public:
        Callback5List() {}
        Callback5List(const Callback5List &other) : Callback5<Result, Arg1, Arg2, Arg3, Arg4, Arg5>()
        {
            for (std::size_t i = 0; i < other.m_list.size(); ++i)
                m_list.push_back(static_cast<Callback5<Result, Arg1, Arg2, Arg3, Arg4, Arg5> *>(other.m_list[i]->Clone()));
        }
        virtual ~Callback5List()
        {
            for (std::size_t i = 0; i < m_list.size(); ++i)
                delete m_list[i];
        }
        void Add(const Callback5<Result, Arg1, Arg2, Arg3, Arg4, Arg5> &cb)
        {
            m_list.push_back(static_cast<Callback5<Result, Arg1, Arg2, Arg3, Arg4, Arg5> *>(cb.Clone()));
        }
        void Remove(const Callback5<Result, Arg1, Arg2, Arg3, Arg4, Arg5> &cb)
        {
            for (std::size_t i = 0; i < m_list.size(); ++i)
                if (m_list[i]->Equals(cb))
                {
                    delete m_list[i];
                    m_list.erase(m_list.begin() + i);
                    return;
                }
        }
        // Calls every callback in order; the result is the last one's.
        virtual Result operator()(Arg1 a1, Arg2 a2, Arg3 a3, Arg4 a4, Arg5 a5) const
        {
            for (std::size_t i = 0; i + 1 < m_list.size(); ++i)
                (*m_list[i])(a1, a2, a3, a4, a5);
            return (*m_list.back())(a1, a2, a3, a4, a5);
        }
        virtual NXOpen::BaseCallback *Clone() const { return new Callback5List(*this); }
        virtual bool Equals(const NXOpen::BaseCallback &other) const { return &other == this; }

    private:
        Callback5List &operator=(const Callback5List &);
        std::vector<Callback5<Result, Arg1, Arg2, Arg3, Arg4, Arg5> *> m_list;
    };

    template <class T, class Result, class Arg1, class Arg2, class Arg3, class Arg4, class Arg5>
    Callback5MemberFunction<T, Result, Arg1, Arg2, Arg3, Arg4, Arg5> make_callback(T *object, Result (T::*fn)(Arg1, Arg2, Arg3, Arg4, Arg5))
    {
        return Callback5MemberFunction<T, Result, Arg1, Arg2, Arg3, Arg4, Arg5>(object, fn);
    }

    template <class Result, class Arg1, class Arg2, class Arg3, class Arg4, class Arg5>
    Callback5Function<Result, Arg1, Arg2, Arg3, Arg4, Arg5> make_callback(Result (*fn)(Arg1, Arg2, Arg3, Arg4, Arg5))
    {
        return Callback5Function<Result, Arg1, Arg2, Arg3, Arg4, Arg5>(fn);
    }

    template <class Result, class Arg1, class Arg2, class Arg3, class Arg4, class Arg5, class Arg6>
    class Callback6 : public BaseCallback
    {
    public:
        typedef Result ResultType;
        typedef Arg1 Arg1Type;
        typedef Arg2 Arg2Type;
        typedef Arg3 Arg3Type;
        typedef Arg4 Arg4Type;
        typedef Arg5 Arg5Type;
        typedef Arg6 Arg6Type;
        virtual ~Callback6() {}
        virtual Result operator()(Arg1 a1, Arg2 a2, Arg3 a3, Arg4 a4, Arg5 a5, Arg6 a6) const = 0;
    };

    template <class Result, class Arg1, class Arg2, class Arg3, class Arg4, class Arg5, class Arg6>
    class Callback6Function : public Callback6<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6>
    {
    public:
        typedef Result (*FunctionType)(Arg1, Arg2, Arg3, Arg4, Arg5, Arg6);
        Callback6Function(FunctionType fn) : m_fn(fn) {}
        virtual Result operator()(Arg1 a1, Arg2 a2, Arg3 a3, Arg4 a4, Arg5 a5, Arg6 a6) const { return m_fn(a1, a2, a3, a4, a5, a6); }
        virtual NXOpen::BaseCallback *Clone() const { return new Callback6Function(*this); }
        virtual bool Equals(const NXOpen::BaseCallback &other) const
        {
            const Callback6Function *o = dynamic_cast<const Callback6Function *>(&other);
            return o != 0 && o->m_fn == m_fn;
        }

    private:
        FunctionType m_fn;
    };

    template <class T, class Result, class Arg1, class Arg2, class Arg3, class Arg4, class Arg5, class Arg6>
    class Callback6MemberFunction : public Callback6<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6>
    {
    public:
        typedef Result (T::*FunctionType)(Arg1, Arg2, Arg3, Arg4, Arg5, Arg6);
        Callback6MemberFunction(T *object, FunctionType fn) : m_object(object), m_fn(fn) {}
        virtual Result operator()(Arg1 a1, Arg2 a2, Arg3 a3, Arg4 a4, Arg5 a5, Arg6 a6) const { return (m_object->*m_fn)(a1, a2, a3, a4, a5, a6); }
        virtual NXOpen::BaseCallback *Clone() const { return new Callback6MemberFunction(*this); }
        virtual bool Equals(const NXOpen::BaseCallback &other) const
        {
            const Callback6MemberFunction *o = dynamic_cast<const Callback6MemberFunction *>(&other);
            return o != 0 && o->m_object == m_object && o->m_fn == m_fn;
        }

    private:
        T *m_object;
        FunctionType m_fn;
    };

    template <class Result, class Arg1, class Arg2, class Arg3, class Arg4, class Arg5, class Arg6>
    class Callback6List : public Callback6<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6>
    {
    public:
        Callback6List() {}
        Callback6List(const Callback6List &other) : Callback6<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6>()
        {
            for (std::size_t i = 0; i < other.m_list.size(); ++i)
                m_list.push_back(static_cast<Callback6<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6> *>(other.m_list[i]->Clone()));
        }
        virtual ~Callback6List()
        {
            for (std::size_t i = 0; i < m_list.size(); ++i)
                delete m_list[i];
        }
        void Add(const Callback6<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6> &cb)
        {
            m_list.push_back(static_cast<Callback6<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6> *>(cb.Clone()));
        }
        void Remove(const Callback6<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6> &cb)
        {
            for (std::size_t i = 0; i < m_list.size(); ++i)
                if (m_list[i]->Equals(cb))
                {
                    delete m_list[i];
                    m_list.erase(m_list.begin() + i);
                    return;
                }
        }
        // Calls every callback in order; the result is the last one's.
        virtual Result operator()(Arg1 a1, Arg2 a2, Arg3 a3, Arg4 a4, Arg5 a5, Arg6 a6) const
        {
            for (std::size_t i = 0; i + 1 < m_list.size(); ++i)
                (*m_list[i])(a1, a2, a3, a4, a5, a6);
            return (*m_list.back())(a1, a2, a3, a4, a5, a6);
        }
        virtual NXOpen::BaseCallback *Clone() const { return new Callback6List(*this); }
        virtual bool Equals(const NXOpen::BaseCallback &other) const { return &other == this; }

    private:
        Callback6List &operator=(const Callback6List &);
        std::vector<Callback6<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6> *> m_list;
    };

    template <class T, class Result, class Arg1, class Arg2, class Arg3, class Arg4, class Arg5, class Arg6>
    Callback6MemberFunction<T, Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6> make_callback(T *object, Result (T::*fn)(Arg1, Arg2, Arg3, Arg4, Arg5, Arg6))
    {
        return Callback6MemberFunction<T, Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6>(object, fn);
    }

    template <class Result, class Arg1, class Arg2, class Arg3, class Arg4, class Arg5, class Arg6>
    Callback6Function<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6> make_callback(Result (*fn)(Arg1, Arg2, Arg3, Arg4, Arg5, Arg6))
    {
        return Callback6Function<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6>(fn);
    }

    template <class Result, class Arg1, class Arg2, class Arg3, class Arg4, class Arg5, class Arg6, class Arg7>
    class Callback7 : public BaseCallback
    {
    public:
        typedef Result ResultType;
        typedef Arg1 Arg1Type;
        typedef Arg2 Arg2Type;
        typedef Arg3 Arg3Type;
        typedef Arg4 Arg4Type;
        typedef Arg5 Arg5Type;
        typedef Arg6 Arg6Type;
        typedef Arg7 Arg7Type;
        virtual ~Callback7() {}
        virtual Result operator()(Arg1 a1, Arg2 a2, Arg3 a3, Arg4 a4, Arg5 a5, Arg6 a6, Arg7 a7) const = 0;
    };

    template <class Result, class Arg1, class Arg2, class Arg3, class Arg4, class Arg5, class Arg6, class Arg7>
    class Callback7Function : public Callback7<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7>
    {
    public:
        typedef Result (*FunctionType)(Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7);
        Callback7Function(FunctionType fn) : m_fn(fn) {}
        virtual Result operator()(Arg1 a1, Arg2 a2, Arg3 a3, Arg4 a4, Arg5 a5, Arg6 a6, Arg7 a7) const { return m_fn(a1, a2, a3, a4, a5, a6, a7); }
        virtual NXOpen::BaseCallback *Clone() const { return new Callback7Function(*this); }
        virtual bool Equals(const NXOpen::BaseCallback &other) const
        {
            const Callback7Function *o = dynamic_cast<const Callback7Function *>(&other);
            return o != 0 && o->m_fn == m_fn;
        }

    private:
        FunctionType m_fn;
    };

    template <class T, class Result, class Arg1, class Arg2, class Arg3, class Arg4, class Arg5, class Arg6, class Arg7>
    class Callback7MemberFunction : public Callback7<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7>
    {
    public:
        typedef Result (T::*FunctionType)(Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7);
        Callback7MemberFunction(T *object, FunctionType fn) : m_object(object), m_fn(fn) {}
        virtual Result operator()(Arg1 a1, Arg2 a2, Arg3 a3, Arg4 a4, Arg5 a5, Arg6 a6, Arg7 a7) const { return (m_object->*m_fn)(a1, a2, a3, a4, a5, a6, a7); }
        virtual NXOpen::BaseCallback *Clone() const { return new Callback7MemberFunction(*this); }
        virtual bool Equals(const NXOpen::BaseCallback &other) const
        {
            const Callback7MemberFunction *o = dynamic_cast<const Callback7MemberFunction *>(&other);
            return o != 0 && o->m_object == m_object && o->m_fn == m_fn;
        }

    private:
        T *m_object;
        FunctionType m_fn;
    };

    template <class Result, class Arg1, class Arg2, class Arg3, class Arg4, class Arg5, class Arg6, class Arg7>
    class Callback7List : public Callback7<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7>
    {
    public:
        Callback7List() {}
        Callback7List(const Callback7List &other) : Callback7<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7>()
        {
            for (std::size_t i = 0; i < other.m_list.size(); ++i)
                m_list.push_back(static_cast<Callback7<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7> *>(other.m_list[i]->Clone()));
        }
        virtual ~Callback7List()
        {
            for (std::size_t i = 0; i < m_list.size(); ++i)
                delete m_list[i];
        }
        void Add(const Callback7<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7> &cb)
        {
            m_list.push_back(static_cast<Callback7<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7> *>(cb.Clone()));
        }
        void Remove(const Callback7<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7> &cb)
        {
            for (std::size_t i = 0; i < m_list.size(); ++i)
                if (m_list[i]->Equals(cb))
                {
                    delete m_list[i];
                    m_list.erase(m_list.begin() + i);
                    return;
                }
        }
        // Calls every callback in order; the result is the last one's.
        virtual Result operator()(Arg1 a1, Arg2 a2, Arg3 a3, Arg4 a4, Arg5 a5, Arg6 a6, Arg7 a7) const
        {
            for (std::size_t i = 0; i + 1 < m_list.size(); ++i)
                (*m_list[i])(a1, a2, a3, a4, a5, a6, a7);
            return (*m_list.back())(a1, a2, a3, a4, a5, a6, a7);
        }
        virtual NXOpen::BaseCallback *Clone() const { return new Callback7List(*this); }
        virtual bool Equals(const NXOpen::BaseCallback &other) const { return &other == this; }

    private:
        Callback7List &operator=(const Callback7List &);
        std::vector<Callback7<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7> *> m_list;
    };

    template <class T, class Result, class Arg1, class Arg2, class Arg3, class Arg4, class Arg5, class Arg6, class Arg7>
    Callback7MemberFunction<T, Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7> make_callback(T *object, Result (T::*fn)(Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7))
    {
        return Callback7MemberFunction<T, Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7>(object, fn);
    }

    template <class Result, class Arg1, class Arg2, class Arg3, class Arg4, class Arg5, class Arg6, class Arg7>
    Callback7Function<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7> make_callback(Result (*fn)(Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7))
    {
        return Callback7Function<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7>(fn);
    }

    template <class Result, class Arg1, class Arg2, class Arg3, class Arg4, class Arg5, class Arg6, class Arg7, class Arg8>
    class Callback8 : public BaseCallback
    {
    public:
        typedef Result ResultType;
        typedef Arg1 Arg1Type;
        typedef Arg2 Arg2Type;
        typedef Arg3 Arg3Type;
        typedef Arg4 Arg4Type;
        typedef Arg5 Arg5Type;
        typedef Arg6 Arg6Type;
        typedef Arg7 Arg7Type;
        typedef Arg8 Arg8Type;
        virtual ~Callback8() {}
        virtual Result operator()(Arg1 a1, Arg2 a2, Arg3 a3, Arg4 a4, Arg5 a5, Arg6 a6, Arg7 a7, Arg8 a8) const = 0;
    };

    template <class Result, class Arg1, class Arg2, class Arg3, class Arg4, class Arg5, class Arg6, class Arg7, class Arg8>
    class Callback8Function : public Callback8<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7, Arg8>
    {
    public:
        typedef Result (*FunctionType)(Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7, Arg8);
        Callback8Function(FunctionType fn) : m_fn(fn) {}
        virtual Result operator()(Arg1 a1, Arg2 a2, Arg3 a3, Arg4 a4, Arg5 a5, Arg6 a6, Arg7 a7, Arg8 a8) const { return m_fn(a1, a2, a3, a4, a5, a6, a7, a8); }
        virtual NXOpen::BaseCallback *Clone() const { return new Callback8Function(*this); }
        virtual bool Equals(const NXOpen::BaseCallback &other) const
        {
            const Callback8Function *o = dynamic_cast<const Callback8Function *>(&other);
            return o != 0 && o->m_fn == m_fn;
        }

    private:
        FunctionType m_fn;
    };

    template <class T, class Result, class Arg1, class Arg2, class Arg3, class Arg4, class Arg5, class Arg6, class Arg7, class Arg8>
    class Callback8MemberFunction : public Callback8<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7, Arg8>
    {
    public:
        typedef Result (T::*FunctionType)(Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7, Arg8);
        Callback8MemberFunction(T *object, FunctionType fn) : m_object(object), m_fn(fn) {}
        virtual Result operator()(Arg1 a1, Arg2 a2, Arg3 a3, Arg4 a4, Arg5 a5, Arg6 a6, Arg7 a7, Arg8 a8) const { return (m_object->*m_fn)(a1, a2, a3, a4, a5, a6, a7, a8); }
        virtual NXOpen::BaseCallback *Clone() const { return new Callback8MemberFunction(*this); }
        virtual bool Equals(const NXOpen::BaseCallback &other) const
        {
            const Callback8MemberFunction *o = dynamic_cast<const Callback8MemberFunction *>(&other);
            return o != 0 && o->m_object == m_object && o->m_fn == m_fn;
        }

    private:
        T *m_object;
        FunctionType m_fn;
    };

    template <class Result, class Arg1, class Arg2, class Arg3, class Arg4, class Arg5, class Arg6, class Arg7, class Arg8>
    class Callback8List : public Callback8<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7, Arg8>
    {
    public:
        Callback8List() {}
        Callback8List(const Callback8List &other) : Callback8<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7, Arg8>()
        {
            for (std::size_t i = 0; i < other.m_list.size(); ++i)
                m_list.push_back(static_cast<Callback8<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7, Arg8> *>(other.m_list[i]->Clone()));
        }
        virtual ~Callback8List()
        {
            for (std::size_t i = 0; i < m_list.size(); ++i)
                delete m_list[i];
        }
        void Add(const Callback8<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7, Arg8> &cb)
        {
            m_list.push_back(static_cast<Callback8<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7, Arg8> *>(cb.Clone()));
        }
        void Remove(const Callback8<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7, Arg8> &cb)
        {
            for (std::size_t i = 0; i < m_list.size(); ++i)
                if (m_list[i]->Equals(cb))
                {
                    delete m_list[i];
                    m_list.erase(m_list.begin() + i);
                    return;
                }
        }
        // Calls every callback in order; the result is the last one's.
        virtual Result operator()(Arg1 a1, Arg2 a2, Arg3 a3, Arg4 a4, Arg5 a5, Arg6 a6, Arg7 a7, Arg8 a8) const
        {
            for (std::size_t i = 0; i + 1 < m_list.size(); ++i)
                (*m_list[i])(a1, a2, a3, a4, a5, a6, a7, a8);
            return (*m_list.back())(a1, a2, a3, a4, a5, a6, a7, a8);
        }
        virtual NXOpen::BaseCallback *Clone() const { return new Callback8List(*this); }
        virtual bool Equals(const NXOpen::BaseCallback &other) const { return &other == this; }

    private:
        Callback8List &operator=(const Callback8List &);
        std::vector<Callback8<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7, Arg8> *> m_list;
    };

    template <class T, class Result, class Arg1, class Arg2, class Arg3, class Arg4, class Arg5, class Arg6, class Arg7, class Arg8>
    Callback8MemberFunction<T, Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7, Arg8> make_callback(T *object, Result (T::*fn)(Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7, Arg8))
    {
        return Callback8MemberFunction<T, Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7, Arg8>(object, fn);
    }

    template <class Result, class Arg1, class Arg2, class Arg3, class Arg4, class Arg5, class Arg6, class Arg7, class Arg8>
    Callback8Function<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7, Arg8> make_callback(Result (*fn)(Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7, Arg8))
    {
        return Callback8Function<Result, Arg1, Arg2, Arg3, Arg4, Arg5, Arg6, Arg7, Arg8>(fn);
    }
}

#endif
