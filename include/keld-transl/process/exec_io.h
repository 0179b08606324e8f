#ifndef KELD_TRANSL_PROCESS_EXEC_IO_H
#define KELD_TRANSL_PROCESS_EXEC_IO_H

#include <keld-transl/attributes/option.h>

#include <string>

namespace transl_tk {

/// The options of a run and the file that takes them from the host to the translator.
///
/// The file "vorn_transl_tk_options_<host's process id>.xml" lies in a temporary directory from
/// `write` in the host to `read` in the translator, and only its owner can read it. Of the values,
/// int, bool, text and double arrive, the double to six significant digits; float and unsigned char
/// arrive as 0.
class KELD_TRANSL_EXPORT IExecIO
{
protected:
    IExecIO() = default;
    virtual ~IExecIO() = default;

public:
    IExecIO(IExecIO const &) = delete;
    IExecIO & operator=(IExecIO const &) = delete;

    static IExecIO * create();

    /// Frees the object with all its options; null is no fault.
    static void destruct(IExecIO * options);

    /// Appends `option` and adopts it; null is passed over.
    virtual void addOption(IOption * option) = 0;

    /// Path of the options file of process `id`; empty when there is no temporary directory.
    virtual std::string optionsFilePath(std::string const & id) = 0;

    /// Appends the options from the file of process `id` and removes the file. False, with a line
    /// on the error stream, when there is no temporary directory, and when the file is missing, is
    /// larger than 8 MiB, does not parse, or has an empty root, as that of no options has.
    virtual bool read(std::string const & id) = 0;

    /// Saves all options into the file of this process. False, with a line on the error stream,
    /// when that fails, the file would be larger than 8 MiB, or a text holds what XML cannot hold;
    /// then no file is left. A value of type float must not be among them: writing it ends the
    /// process.
    virtual bool write() = 0;

    virtual int size() = 0;

    /// The option at `index`, which must exist. It stays owned by this object.
    virtual IOption * getOption(int const & index) = 0;

    /// Frees all options.
    virtual void clear() = 0;
};

} // namespace transl_tk

#endif
