#pragma once
// Numbers of the pictures in the program's resources. Plain macros only: the resource compiler reads this
// file too.

// The disks of the list: eight in a row, in the order of the catalogue's icon numbers 1 to 8.
#define IDI_DISK_1 101
#define IDI_DISK_2 102
#define IDI_DISK_3 103
#define IDI_DISK_4 104
#define IDI_DISK_5 105
#define IDI_DISK_6 106
#define IDI_DISK_7 107
#define IDI_DISK_8 108

// The wizard's side picture: four in a row, for screens of 96, 120, 144 and 192 dots per inch.
#define IDB_SIDE_96 201
#define IDB_SIDE_120 202
#define IDB_SIDE_144 203
#define IDB_SIDE_192 204
