; SPDX-License-Identifier: MIT
; The serial line: the USART, its interrupt, and the buffers for both directions.
;
; The interrupt reads every received byte immediately. It counts each `!` and empties the receive buffer; during a
; sweep, it also clears SWEEPING, which ends the sweep. It stores all other bytes in the receive buffer, or discards
; them during a sweep. After a framing error, an overrun or a buffer overflow, it stores LINE_SPOILT in the buffer. A
; received byte never has this value, because it is the code of `!`.
;
; line_start      set up USART and buffers; the caller enables interrupts. 28 cycles                   uses W
; line_next       next receiver event in W: LINE_NOTHING, LINE_BYTE, LINE_ABORT. 21 cycles             uses W, FSR
; line_watch      restart a receiver stopped by an overrun. 5 cycles without an overrun                uses W, FSR
; line_send       queue the byte in W; wait while the buffer is full. 21 cycles without waiting        uses W, FSR
; line_drain      wait until the transmit buffer is empty; the USART still holds up to two bytes.      uses W
; line_discard    discard all bytes in the transmit buffer. 11 cycles                                  uses W
; line_listen     prepare for a sweep: set SWEEPING and discard received bytes; C = 0 and no effect
;                 if a `!` is pending. 17 cycles                                                       uses W

        include "board.inc"

        global  line_start, line_next, line_watch, line_send, line_drain, line_discard, line_listen
        global  line_flags, line_byte, line_waiting

TX_SIZE         equ 16                  ; powers of two; in each buffer's start address, the bit with
RX_SIZE         equ 32                  ; this value is 0, so clearing the bit wraps a pointer
TX_WRAP         equ 4
RX_WRAP         equ 5

line_shared     udata_shr
saved_w         res 1
line_flags      res 1

line_data       udata
saved_status    res 1
saved_fsr       res 1
received        res 1                   ; interrupt: the current byte
rx_in           res 1                   ; address of the next byte to store
rx_out          res 1                   ; address of the next byte to read
rx_count        res 1
tx_in           res 1
tx_out          res 1
line_waiting    res 1                   ; bytes in the transmit buffer
aborts          res 1                   ; `!` not yet reported by line_next
line_byte       res 1
sending         res 1

tx_section      udata 0xA0
tx_buffer       res TX_SIZE
rx_section      udata 0xC0
rx_buffer       res RX_SIZE

; Disable interrupts. If an interrupt occurs during bcf, retfie sets GIE again, so test the bit.
hold    macro
        bcf     INTCON, GIE
        btfsc   INTCON, GIE
        goto    $-2
        endm

release macro
        bsf     INTCON, GIE
        endm

; --- interrupt ---
; 34 cycles to send a byte, 50 to receive one, 61 for both; entering the interrupt takes 3 more.

line_vector     code 0x004
        movwf   saved_w
        swapf   STATUS, W
        clrf    STATUS                  ; bank 0
        movwf   saved_status
        movf    FSR, W
        movwf   saved_fsr
        btfsc   PIR1, RCIF
        goto    receive

transmit:
        btfss   PIR1, TXIF
        goto    restore
        movf    line_waiting, F
        skpnz
        goto    transmit_rest
        movf    tx_out, W
        movwf   FSR
        movf    INDF, W
        movwf   TXREG
        incf    tx_out, F
        bcf     tx_out, TX_WRAP
        decfsz  line_waiting, F
        goto    restore
transmit_rest:
        banksel PIE1
        bcf     PIE1, TXIE
        banksel PIR1
restore:
        movf    saved_fsr, W
        movwf   FSR
        swapf   saved_status, W
        movwf   STATUS
        swapf   saved_w, F
        swapf   saved_w, W
        retfie

receive:
        btfsc   RCSTA, FERR             ; applies to the next byte read from RCREG
        goto    damaged
        movf    RCREG, W
        movwf   received
        xorlw   '!'
        skpnz
        goto    aborted
        goto    keep
damaged:
        movf    RCREG, W
        movlw   LINE_SPOILT
        movwf   received
keep:
        btfsc   line_flags, SWEEPING
        goto    receive_more
        movf    rx_count, W
        sublw   RX_SIZE - 1
        skpc
        goto    receive_more            ; full; the last entry is already LINE_SPOILT
        movlw   LINE_SPOILT
        skpnz                           ; zero: this is the last free position
        movwf   received
        movf    rx_in, W
        movwf   FSR
        movf    received, W
        movwf   INDF
        incf    rx_in, F
        bcf     rx_in, RX_WRAP
        incf    rx_count, F
receive_more:
        btfsc   PIR1, RCIF
        goto    receive
        btfss   RCSTA, OERR             ; the two bytes before the lost one have been read
        goto    transmit
        bcf     RCSTA, CREN
        bsf     RCSTA, CREN
        movlw   LINE_SPOILT
        movwf   received
        goto    keep

aborted:
        incf    aborts, F
        skpnz
        decf    aborts, F               ; stop at 255
        clrf    rx_count
        movf    rx_in, W
        movwf   rx_out
        bcf     line_flags, SWEEPING
        goto    receive_more

; --- code outside the interrupt ---

line_code       code
line_start:
        clrf    line_flags
        clrf    aborts
        clrf    rx_count
        clrf    line_waiting
        movlw   tx_buffer
        movwf   tx_in
        movwf   tx_out
        movlw   rx_buffer
        movwf   rx_in
        movwf   rx_out
        banksel SPBRG
        movlw   BAUD_DIVISOR
        movwf   SPBRG
        movlw   (1 << TXEN) | (1 << BRGH)
        movwf   TXSTA
        movlw   1 << RCIE
        movwf   PIE1
        banksel RCSTA
        movlw   (1 << SPEN) | (1 << CREN)
        movwf   RCSTA
        movlw   1 << PEIE               ; the caller sets GIE later
        movwf   INTCON
        return

line_next:
        hold
        movf    aborts, F
        skpz
        goto    next_abort
        movf    rx_count, F
        skpnz
        goto    next_nothing
        movf    rx_out, W
        movwf   FSR
        movf    INDF, W
        movwf   line_byte
        incf    rx_out, F
        bcf     rx_out, RX_WRAP
        decf    rx_count, F
        release
        retlw   LINE_BYTE
next_abort:
        decf    aborts, F
        release
        retlw   LINE_ABORT
next_nothing:
        release
        retlw   LINE_NOTHING

; The interrupt normally handles overruns. If an overrun occurs just after the interrupt's last test of OERR, however,
; the receiver has stopped with nothing left to read, and no further interrupt occurs.
line_watch:
        btfss   RCSTA, OERR
        return
        hold
        btfsc   PIR1, RCIF
        goto    watch_end               ; there are bytes to read: the interrupt is about to occur
        bcf     RCSTA, CREN
        bsf     RCSTA, CREN
        btfsc   line_flags, SWEEPING
        goto    watch_end
        movf    rx_count, W
        xorlw   RX_SIZE
        skpnz
        goto    watch_end               ; full; the last entry is already LINE_SPOILT
        movf    rx_in, W
        movwf   FSR
        movlw   LINE_SPOILT
        movwf   INDF
        incf    rx_in, F
        bcf     rx_in, RX_WRAP
        incf    rx_count, F
watch_end:
        release
        return

; Need not disable interrupts: a single instruction counts the byte, and the interrupt tests the count before sending.
line_send:
        movwf   sending
send_wait:
        movf    line_waiting, W
        xorlw   TX_SIZE
        skpnz
        goto    send_wait
        movf    tx_in, W
        movwf   FSR
        movf    sending, W
        movwf   INDF
        incf    tx_in, F
        bcf     tx_in, TX_WRAP
        incf    line_waiting, F
        banksel PIE1
        bsf     PIE1, TXIE
        banksel PIR1
        return

line_drain:
        movf    line_waiting, F
        skpz
        goto    line_drain
        return

line_discard:
        hold
        clrf    line_waiting
        movf    tx_in, W
        movwf   tx_out
        release
        return

line_listen:
        hold
        clrc
        movf    aborts, F
        skpz
        goto    listen_end
        bsf     line_flags, SWEEPING
        clrf    rx_count
        movf    rx_in, W
        movwf   rx_out
        setc
listen_end:
        release
        return

        end
