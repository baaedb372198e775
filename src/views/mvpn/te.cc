#include "views/mvpn/te.h"

void ostrel_reg_db_view(const ShowArgs&) {}

void ostrel_te_db_view(const ShowArgs&) {}

void ostrel_te_backup_view(const ShowArgs&) {}
