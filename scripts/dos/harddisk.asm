; The first sector of a hard disk that shows that it has started. The table of partitions is added to it.

        cpu     8086
        bits    16
        org     7C00h

        xor     ax, ax
        mov     ds, ax
        cld
        mov     si, text
nextLetter:
        lodsb
        test    al, al
        jz      stop
        mov     ah, 0Eh
        mov     bx, 7
        int     10h
        jmp     nextLetter
stop:
        hlt
        jmp     stop

text:   db      13, 10, "The hard disk has started.", 13, 10, 0
