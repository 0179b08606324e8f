#ifndef KELD_TRANSL_EXCHANGE_SINGLETON_H
#define KELD_TRANSL_EXCHANGE_SINGLETON_H

namespace transl_tk {

/// Gives a class one instance per process, made at the first use and destroyed at exit. Making it
/// is safe from several threads; using it is the class's own concern.
template <class Class> class Singleton
{
public:
    static Class & instance()
    {
        static Class single;
        return single;
    }

    Singleton(Singleton const &) = delete;
    Singleton & operator=(Singleton const &) = delete;

protected:
    Singleton() = default;
    virtual ~Singleton() = default;
};

} // namespace transl_tk

#endif
