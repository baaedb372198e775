// The registration database (-K), the TE database (-F) and the TE backup database (-G).
#pragma once

#include "front/show_args.h"

void ostrel_reg_db_view(const ShowArgs& args);
void ostrel_te_db_view(const ShowArgs& args);
void ostrel_te_backup_view(const ShowArgs& args);
