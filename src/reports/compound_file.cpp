#include "reports/compound_file.h"

#include "platform/files.h"

#include <gsf/gsf-outfile-msole.h>
#include <gsf/gsf-output-memory.h>

#include <memory>

namespace
{

struct Unref
{
    void operator()(gpointer object) const { g_object_unref(object); }
};
template <class Object>
using GObjectPointer = std::unique_ptr<Object, Unref>;

/// Tells readers that the file is a workbook.
constexpr guint8 WorkbookClass[16] = {0x20, 0x08, 0x02, 0, 0, 0, 0, 0,
                                      0xC0, 0,    0,    0, 0, 0, 0, 0x46};

} // namespace

void WriteCompoundFile(const QString &path, const char *streamName, const QByteArray &content)
{
    const GObjectPointer<GsfOutput> memory(gsf_output_memory_new());
    {
        const GObjectPointer<GsfOutfile> file(gsf_outfile_msole_new(memory.get()));
        gsf_outfile_msole_set_class_id(GSF_OUTFILE_MSOLE(file.get()), WorkbookClass);
        const GObjectPointer<GsfOutput> stream(
            gsf_outfile_new_child(file.get(), streamName, FALSE));
        gsf_output_write(stream.get(), static_cast<gsize>(content.size()),
                         reinterpret_cast<const guint8 *>(content.constData()));
        gsf_output_close(stream.get());
        gsf_output_close(GSF_OUTPUT(file.get()));
    }
    Files::WriteFile(path,
                     QByteArrayView(gsf_output_memory_get_bytes(GSF_OUTPUT_MEMORY(memory.get())),
                                    static_cast<qsizetype>(gsf_output_size(memory.get()))));
}
