/// The library for C: all functions with C linkage, and the records that they use.
///
/// What a function does, requires and returns is stated once, in its header for C++; a line above
/// each group names that header. The classes among the records are plain data here, with the same
/// fields.
///
/// In C++ this header includes zelvan.h and declares the functions once more, so that a compiler
/// refuses any difference. A test compares the records, constants and names with those of the C++
/// headers.
#pragma once

#ifdef __cplusplus
#include <zelvan/zelvan.h>

extern "C" {
#else
#include <stddef.h>
#include <stdint.h>
#include <stdio.h>

// ---- records of <zelvan/transforms/records.h>

typedef struct real_pt_t {
  double x;
  double y;
} real_pt_t;

typedef struct int_pt_t {
  int x;
  int y;
} int_pt_t;

typedef struct real_rect_t {
  real_pt_t corners[4];
} real_rect_t;

typedef enum drw_edge_flag {
  drw_edge_invisible = 0,
  drw_edge_visible = 1,
  drw_edge_close_invisible = 2,
  drw_edge_close_visible = 3
} drw_edge_flag;

typedef struct drw_pset_t {
  int n_points;
  real_pt_t* points;
  int* edge_flags;
} drw_pset_t;

typedef struct drw_dpset_t {
  int n_points;
  int_pt_t* points;
  int* edge_flags;
} drw_dpset_t;

// ---- records of <zelvan/transforms/mtx2d.h>

enum { Mtx2DTypeDiagonal = 0, Mtx2DTypeQuadrant = 1, Mtx2DTypeGeneral = 2, Mtx2DTypeIdentity = 3 };

typedef enum Mtx2DOrient {
  Mtx2DOrientNone = 0,
  Mtx2DOrientRot90 = 1,
  Mtx2DOrientRot180 = 2,
  Mtx2DOrientRot270 = 3,
  Mtx2DOrientReflectX = 4,
  Mtx2DOrientReflectY = 5,
  Mtx2DOrientRot90ReflectY = 6,
  Mtx2DOrientRot90ReflectX = 7
} Mtx2DOrient;

enum { Mtx2DRotateFirst = 1, Mtx2DRotateLast = 2 };

/// A transform. Fill a new one with `initialize_matrix` or `set_xfm`.
typedef struct Mtx2D {
  double m11;
  double m12;
  double m21;
  double m22;
  double tx;
  double ty;
  int mirror;
  int type;
} Mtx2D;

// ---- classes that C only points to

/// A pick region, made and released as <zelvan/pick/region_functions.h> says.
typedef struct CPickRegion CPickRegion;

/// An index of polygons, made and released as <zelvan/pick/pick_index_functions.h> says.
typedef struct CPickIndex CPickIndex;

/// A table of line types, made and released as <zelvan/linetypes/line_type_functions.h> says.
typedef struct CLineTypeDefList CLineTypeDefList;

// ---- records of <zelvan/geometry/conic.h>

typedef struct utl_conic_t {
  double a;
  double b;
  double c;
  double d;
  double e;
  double f;
  real_pt_t start;
  real_pt_t end;
  short clockwise;
} utl_conic_t;

typedef struct utl_ellipse_t {
  double sin_rot;
  double cos_rot;
  double off_x;
  double off_y;
  double start;
  double sweep;
  double axis_x;
  double axis_y;
} utl_ellipse_t;

typedef struct utl_hyperbola_t {
  double sin_rot;
  double cos_rot;
  double cen_x;
  double cen_y;
  double start;
  double end;
  double sq_x;
  double sq_y;
  double branch;
  short y_branches;
} utl_hyperbola_t;

typedef struct utl_parabola_t {
  double sin_rot;
  double cos_rot;
  double vtx_x;
  double vtx_y;
  double start;
  double end;
  double k;
  short y_of_x;
} utl_parabola_t;

enum {
  utl_conic_line = 'L',
  utl_conic_parabola = 'P',
  utl_conic_hyperbola = 'H',
  utl_conic_ellipse = 'E',
  utl_conic_circle = 'C',
  utl_conic_unknown = '?'
};

// ---- records of <zelvan/colour/color_rgb.h>, color_map.h and color_xfm.h

typedef struct ColorRGB {
  int red;
  int green;
  int blue;
} ColorRGB;

/// A table of colours. You can also fill this record yourself, with an array of your own, but must
/// not pass such a record to `zelvan_delete_color_map`.
typedef struct ColorMap {
  unsigned int map_size;
  unsigned int map_count;
  unsigned int max_value;
  ColorRGB* colors;
} ColorMap;

typedef struct ColorXfm {
  unsigned int xfm_size;
  unsigned int* xfm_table;
  unsigned int hist_exact;
  unsigned int hist_3;
  unsigned int hist_7;
  unsigned int hist_15;
  unsigned int hist_31;
} ColorXfm;

// ---- records of <zelvan/mem/mem.h>

enum {
  MEM_SUCCESS = 0,
  MEM_POOL_OVERFLOW = 1,
  MEM_TABLE_FAILED = 2,
  MEM_POOL_TOO_SMALL = 3,
  MEM_MALLOC_FAILED = 4
};

typedef struct MemPool {
  int limit;
  int used;
} MemPool;

typedef struct MemException MemException;
typedef unsigned short (*MemExceptionHandler)(MemException* exception);

typedef struct MemEntry {
  void* address;
  int size;
  int total_size;
  void* key;
  void** back_ptr;
  unsigned short excluded;
  int sequence;
  int parent;
} MemEntry;

typedef struct MemList {
  int n_entries;
  int n_used;
  MemPool* pool;
  MemExceptionHandler exception_handler;
  MemEntry* entries;
} MemList;

struct MemException {
  int code;
  MemList* list;
  void* key;
  int size;
};

// ---- records of <zelvan/var/name_list.h> and name_table.h

typedef struct VarNameInfo {
  struct VarNameInfo* next;
  char* name;
  void* info;
} VarNameInfo;

typedef struct VarNameValue {
  const char* name;
  short value;
} VarNameValue;

// ---- constants of <zelvan/tra/character_sets.h>

enum { TRA_ASCII_TO_EBCDIC = 1, TRA_EBCDIC_TO_ASCII = 2 };

// ---- records of <zelvan/text/str_field.h>

enum { STR_WORD = 0, STR_STRING = 1, STR_NUMBER = 2, STR_END = 3 };

typedef struct str_field {
  int type;
  double value;
  uint64_t length;
  char* text;
  char* next;
} str_field;

// ---- constants of <zelvan/osh/file_access.h>

enum {
  osh_open_read_only = 0x0000,
  osh_open_write_only = 0x0001,
  osh_open_read_write = 0x0002,
  osh_open_append = 0x0008,
  osh_open_create = 0x0100,
  osh_open_truncate = 0x0200,
  osh_open_exclusive = 0x0400,
  osh_open_as_text = 0x4000,
  osh_open_as_binary = -0x8000,
  osh_permit_read = 0x100,
  osh_permit_write = 0x80,
  osh_kind_file = 0x400,
  osh_kind_directory = 0x1000
};
#endif

// ---- <zelvan/transforms/matrix_functions.h>

void initialize_matrix(Mtx2D* matrix);
void set_matrix_type(Mtx2D* matrix);
void set_xfm(double x0, double y0, Mtx2DOrient orient, double sx, double sy, double dx, double dy,
             Mtx2D* matrix);
void translate_matrix(double dx, double dy, Mtx2D* matrix);
void scale_matrix(double sx, double sy, Mtx2D* matrix);
void rotate_matrix(double angle, Mtx2D* matrix, int mode);
void orient_matrix(Mtx2DOrient orient, Mtx2D* matrix);
void reflect_matrix_x(Mtx2D* matrix);
void reflect_matrix_y(Mtx2D* matrix);
void multiply_matrices(Mtx2D* first, Mtx2D* second, Mtx2D* result);
void invert_matrix(Mtx2D* matrix, Mtx2D* result);
void xfm_get_orientation(Mtx2D* matrix, double* angle, int* mirror);
void XfmRect(real_rect_t* in, real_rect_t* out, Mtx2D* matrix);
void til_xfm_pnt(double x, double y, double* xo, double* yo, Mtx2D* matrix);
void zelvan_map_points(int n, const real_pt_t* in, real_pt_t* out, const Mtx2D* matrix);
void zelvan_map_points_to_device(int n, const real_pt_t* in, int_pt_t* out, const Mtx2D* matrix);
void zelvan_map_points_from_device(int n, const int_pt_t* in, real_pt_t* out, const Mtx2D* matrix);
void zelvan_map_polygons(const drw_pset_t* in, drw_pset_t* out, const Mtx2D* matrix);
void zelvan_map_polygons_to_device(const drw_pset_t* in, drw_dpset_t* out, const Mtx2D* matrix);
void zelvan_map_polygons_from_device(const drw_dpset_t* in, drw_pset_t* out, const Mtx2D* matrix);

// ---- <zelvan/pick/pick_index_functions.h>

CPickIndex* zelvan_new_pick_index(const drw_pset_t* set);
CPickIndex* zelvan_new_pick_index_of_ring(int n, const real_pt_t* points);
void zelvan_delete_pick_index(CPickIndex* index);
int zelvan_hit_pick_index(const CPickIndex* index, double x, double y);
int zelvan_hit_pick_index_with_points(const CPickIndex* index, int n, const real_pt_t* points,
                                      unsigned char* hits);
int zelvan_find_polygons(const CPickIndex* index, double x, double y, int* numbers, int capacity);
int zelvan_winding_number(const CPickIndex* index, int first, int count, double x, double y);

// ---- <zelvan/pick/region_functions.h>

CPickRegion* zelvan_new_rect_region(double x1, double y1, double x2, double y2);
CPickRegion* zelvan_new_polyline_region(int n, const real_pt_t* points);
CPickRegion* zelvan_new_polygon_region(int n, const real_pt_t* points);
CPickRegion* zelvan_new_region_of_polygon(const drw_pset_t* set, int k);
int zelvan_count_polygons(const drw_pset_t* set);
CPickRegion* zelvan_map_region(const CPickRegion* region, const Mtx2D* matrix);
void zelvan_delete_region(CPickRegion* region);
int zelvan_hit_region(const CPickRegion* region, double x, double y, double tolerance);
int zelvan_hit_region_with_points(const CPickRegion* region, int n, const real_pt_t* points,
                                  double tolerance, unsigned char* hits);

// ---- <zelvan/colour/color_map_functions.h>

ColorMap* zelvan_new_color_map(int size, int max_value, const int* rgb);
void zelvan_delete_color_map(ColorMap* map);
int zelvan_set_color(ColorMap* map, int index, const char* text);
int zelvan_set_named_color(ColorMap* map, int index, const char* name);

// ---- <zelvan/colour/color_xfm.h>

ColorMap* ColOpen(int size, int max_value);  // zelvan_delete_color_map releases it
ColorXfm* ColOpenXfm(int size);
void ColCloseXfm(ColorXfm** xfm);
int ColGetClosestColor(ColorRGB* target, ColorMap* map, int* distance);
void ColMapColors(ColorMap* source, ColorMap* target, ColorXfm* xfm);

// ---- <zelvan/geometry/check_polygon_set.h>

int zelvan_check_polygon_set(const drw_pset_t* set, const real_rect_t* rect, char* reason,
                             int size);

// ---- <zelvan/geometry/clip_functions.h>

void zelvan_clip_polygon_set(const drw_pset_t* source, drw_pset_t* target, const real_rect_t* rect);
void zelvan_clip_polygon_set_to_view(const drw_pset_t* source, drw_pset_t* target,
                                     const real_rect_t* rect);
int zelvan_clip_polyline_to_view(const real_pt_t* points, int n_points, const real_rect_t* view,
                                 real_pt_t* out, int* begins, int* n_pieces);

// ---- <zelvan/geometry/conic.h>

char utl_conic_type(utl_conic_t* conic);
void utl_standard_ellipse(utl_conic_t* conic, utl_ellipse_t* out);
void utl_standard_hyperbola(utl_conic_t* conic, utl_hyperbola_t* out);
void utl_standard_parabola(utl_conic_t* conic, utl_parabola_t* out);
void utl_ellipse_point(utl_ellipse_t* form, double t, real_pt_t* out);
void utl_hyperbola_point(utl_hyperbola_t* form, double t, real_pt_t* out);
void utl_parabola_point(utl_parabola_t* form, double t, real_pt_t* out);

// ---- <zelvan/geometry/distance.h>

double utl_point_point(real_pt_t* p, real_pt_t* q);
double utl_point_line(real_pt_t* p, real_pt_t* a, real_pt_t* b);
double utl_point_box(real_pt_t* p, real_pt_t* box);
double utl_point_circle(real_pt_t* p, real_pt_t* center, double radius);
double utl_point_circarc(real_pt_t* p, real_pt_t* center, double radius, real_pt_t* a, real_pt_t* b,
                         short clockwise);
double utl_point_conarc(real_pt_t* p, utl_conic_t* conic);

// ---- <zelvan/geometry/extent.h>

void utl_maxmin_circle(real_pt_t* center, double radius, real_pt_t* max, real_pt_t* min);
void utl_maxmin_conic(utl_conic_t* conic, real_pt_t* max, real_pt_t* min);
void utl_maxmin_cubic(double* coefficients, real_pt_t* max, real_pt_t* min);
void utl_maxmin_rotrect(real_pt_t* center, double* box, double angle);
double utl_evaluate_cubic(double* coefficients, double t);

// ---- <zelvan/geometry/trig.h> and units.h

void utl_rotate_point(real_pt_t* center, real_pt_t* point, double sine, double cosine);
double utl_angle2d(double x1, double y1, double x2, double y2);
void drw_get_trig(int degrees, double* sine, double* cosine);
double utl_inches_to_units(double value, int unit);
double utl_units_to_inches(double value, int unit);

// ---- <zelvan/linetypes/line_type_functions.h>

CLineTypeDefList* zelvan_new_line_types(void);
void zelvan_delete_line_types(CLineTypeDefList* list);
int zelvan_count_fragments(const CLineTypeDefList* list, unsigned int index);
double zelvan_get_fragment(const CLineTypeDefList* list, unsigned int index, int i);
double zelvan_get_pattern_length(const CLineTypeDefList* list, unsigned int index);

// ---- <zelvan/mem/mem.h>

extern int mem_trace;
MemPool* MemPoolNew(int limit);
void MemPoolDelete(MemPool** pool);
MemList* MemListNew(MemPool* pool, MemExceptionHandler handler);
void MemListDelete(MemList** list);
int MemAllocate(MemList* list, int size, void* key, void** back_ptr);
unsigned short MemAvailable(MemList* list, int size);
void MemSetDefaultList(MemList* list);
void MemSetDefaultObject(void* object);
void MemFree(MemList* list, void* address);
void MemSetPointer(MemList* list, void* address, void** back_ptr);
void MemListClear(MemList* list);
void MemListInitializeSearch(MemList* list);
void MemListRemoveFromSearch(MemList* list, void* object);
unsigned short MemListRemoveLargest(MemList* list);
unsigned short MemListRemoveSmallest(MemList* list);
unsigned short MemListRemoveOldest(MemList* list);

// ---- <zelvan/var/name_list.h>, name_table.h and search_value.h

char* VarAddNameInfo(VarNameInfo** list, const char* name, void* info);
char* VarInsertNameInfo(VarNameInfo** list, const char* name, void* info, int position,
                        const char* reference);
void* VarDeleteNameInfo(VarNameInfo** list, const char* name);
void VarExchangeNameInfo(VarNameInfo* list, const char* name1, const char* name2);
char* VarReplaceNameInfo(VarNameInfo* list, const char* old_name, const char* new_name);
unsigned short VarLookupNameInfo(VarNameInfo* list, const char* name, void** info);
char* VarGetName(VarNameInfo* entry);
void* VarListInfo(VarNameInfo* entry);
void VarNextListEntry(VarNameInfo** entry);
unsigned short VarLookupInt(const VarNameValue* table, const char* name, int* value);
unsigned short VarLookupString(const VarNameValue* table, int value, char** name);
intptr_t utl_searchValueForKey(const char* text, const char* key, const char** value);

// ---- <zelvan/tra/byte_order.h>, character_sets.h and foreign_floats.h

void tra_swap_2(void* value);
void tra_swap_4(void* value);
void tra_swap_8(void* value);
void tra_swap_bytes(unsigned short type, unsigned int count, const void* src, void* dst);
void tra_reverse_bits(unsigned short count, const void* src, void* dst);
int UtlByteOrderIsIntel(void);
int utl_is_little_endian(void);
void tra_convert_charset(short code, unsigned short count, const void* src, void* dst);
void tra_convert_flpt(int format, unsigned short type, unsigned short count, const void* src,
                      void* dst);

// ---- <zelvan/text/str_field.h>

str_field* str_parse(char* text);
str_field* str_parseEx(char* text, int mode);
str_field* str_parse_vvcp(char* text);
char* str_token(char* text, char* delimiters, char** next, char* found);
void str_lower_string(char* text);

// ---- <zelvan/osh/file_access.h>

int osh_open_binary(char* path, short flags, short mode);
int osh_open_text(char* path, short flags, short mode);
short osh_close(int fd);
int osh_read(int fd, void* buffer, unsigned int count);
int osh_write(int fd, void* buffer, unsigned int count);
long osh_lseek(int fd, long offset, short whence);
int osh_fdfilesize(int fd);
FILE* osh_fopen_binary(char* path, char* mode);
FILE* osh_fopen_text(char* path, char* mode);
short osh_fclose(FILE* fp);
short osh_fseek(FILE* fp, long offset, int whence);
long osh_ftell(FILE* fp);
short osh_fflush(FILE* fp);
int osh_fputint(int value, int width, FILE* fp);
int osh_readLine(FILE* fp, char* buffer, int size);
size_t osh_fread(void* buffer, unsigned int size, unsigned int count, FILE* fp);
size_t osh_fwrite(void* buffer, unsigned int size, unsigned int count, FILE* fp);
char* osh_fgets(char* buffer, int size, FILE* fp);
int osh_getc(FILE* fp);
int osh_ungetc(int c, FILE* fp);
int osh_fputc(int c, FILE* fp);
int osh_fputs(char* text, FILE* fp);
int osh_feof(FILE* fp);
void osh_rewind(FILE* fp);
int osh_fileno(FILE* fp);
FILE* osh_fdopen(int fd, char* mode);
short osh_file_exists(char* path);
short osh_file_access(char* path, unsigned short mode);
int osh_inquire_file(char* path, unsigned short* mode);
int osh_filesize(char* path);
short osh_cat(char* destination, char* source);
int osh_copyfile(char* destination, char* source);
int osh_rename(char* from, char* to);
short osh_unlink(char* path);
int osh_chmod(char* path, unsigned short mode);
int osh_mkdir(char* path);
int osh_rmdir(char* path);

// ---- <zelvan/osh/paths.h>

int osh_alternate_pathname(char* path, char* alternate);
int osh_append_path(char* first, char* second, char* result);
int osh_truncate_path(char* path, char* directory, char* file);
int osh_verify_file_name(void);
char* osh_find_exec_path(char* path);
int osh_get_working_dir(char* directory);
char* utl_file_extension(char* path);
int utl_unique_filename(char* prefix, char* letters, char* result);
void osh_get_file_parms(short* parms);
short* osh_get_sys_parms(void);

// ---- <zelvan/osh/system_services.h>

char** osh_GetFontFileListCount(int* count);
char** osh_GetFontFileList(void);
void osh_FreeFontFileList(char*** list);
int osh_qsort_compare_strings(const void* first, const void* second);
int osh_get_time_stamp(char* stamp);
int osh_gethostname(char* name, int size);
int osh_setenv(char* name, char* value);
void osh_sleep(unsigned int seconds);
int osh_system(int reserved, char* command);
int osh_system_type(void);
void osh_initialize(void);
void osh_perror(void);

// ---- <zelvan/wipc/session.h>

void zelvan_set_local_sessions_only(int on);

#ifdef __cplusplus
}
#endif
