#ifndef KELD_TRANSL_TRANSL_TK_H
#define KELD_TRANSL_TRANSL_TK_H

/// The whole public interface of the toolkit.

#include <keld-transl/attributes/option.h>
#include <keld-transl/attributes/value.h>
#include <keld-transl/exchange/shared_mem.h>
#include <keld-transl/geom/point.h>
#include <keld-transl/model/base.h>
#include <keld-transl/model/entity_store.h>
#include <keld-transl/model/entity_table.h>
#include <keld-transl/model/original_id.h>
#include <keld-transl/model/point3d.h>
#include <keld-transl/model/pool.h>
#include <keld-transl/model/sub_pool.h>
#include <keld-transl/process/client.h>
#include <keld-transl/process/client_in.h>
#include <keld-transl/process/client_out.h>
#include <keld-transl/process/exec_io.h>
#include <keld-transl/process/exec_paths.h>
#include <keld-transl/process/export_options.h>
#include <keld-transl/process/product_paths.h>
#include <keld-transl/process/rwfd.h>
#include <keld-transl/process/server.h>
#include <keld-transl/reporting/lib_configure.h>
#include <keld-transl/reporting/logger.h>
#include <keld-transl/reporting/logger_policy.h>
#include <keld-transl/reporting/progress_bar_policy.h>
#include <keld-transl/reporting/stream_policy.h>

#endif
