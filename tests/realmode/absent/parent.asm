; Starts C:\BIN\SYS.COM with the error output redirected to the standard output, so that a test can read both. Ends with its
; exit code.

        cpu     8086
        bits    16
        org     100h

        mov     sp, stackEnd
        mov     bx, (stackEnd - $$ + 100h + 15) / 16
        mov     ah, 4Ah                 ; gives back the memory above
        int     21h
        mov     bx, 1                   ; standard output,
        mov     cx, 2                   ; error output
        mov     ah, 46h                 ; the second becomes the first
        int     21h
        mov     [tail + 2], cs
        mov     dx, program
        mov     bx, block
        mov     ax, 4B00h               ; load and execute
        int     21h
        mov     ah, 4Dh                 ; its exit code
        int     21h
        mov     ah, 4Ch
        int     21h

program db      "C:\BIN\SYS.COM", 0
block   dw      0                       ; the same environment
tail    dw      arguments, 0
        dd      -1, -1
arguments:
        db      0, 13
        times   256 db 0
stackEnd:
