#pragma once
// Numbers of the pictures in the program's resources.

#define IDI_DISK_1 101  // eight pictures of disks have the numbers from here on
#define IDB_SIDE_IMAGE 201
