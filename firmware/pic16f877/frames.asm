; SPDX-License-Identifier: MIT
; The sweep: measures point after point and sends frames.
;
; Each point takes these steps, beginning with the FQ_UD pulse:
;   wait until the settling time is nearly over and the transmit buffer has enough space
;   load the word of the next point; the generator uses it at the next FQ_UD
;   compute the word after that one
;   start the conversion
;   during the conversion, pack and send the previous sample
;   read the result
; The wait comes before the load: a sweep that ends during the wait leaves no new word in the generator.
;
; Timer 2 ticks once in 1 1/4 bytes of the line, the time of one point. A point that is fast enough starts its
; conversion on a tick, so that all such points settle for the same time. For a slower point the tick has already
; passed, and there is no wait.
;
; frames_start   set up timer 2.                                                        uses W
; frames_sweep   sweep until SWEEPING is cleared, then drop the bytes not yet sent.     uses W, FSR

        include "board.inc"

        global  frames_start, frames_sweep

        extern  line_flags, line_waiting, line_send, line_watch, line_drain, line_discard
        extern  plan_crc, plan_first, plan_next
        extern  synth_load, synth_update
        extern  sample, converter_arm, converter_read
        extern  crc_high, crc_low, crc_add

; Maximum number of bytes in the transmit buffer (16) when a conversion starts. A conversion adds one or two bytes; that
; of the first point of a frame adds seven (the last two of a frame, its CRC, three of the next one). Only this point
; waits for the line: it follows the generator's largest frequency step, and so gets the most time to settle.
AHEAD           equ 14
AHEAD_FIRST     equ 3

TICK            equ BYTE_CYCLES * 5 / 4

HALTED          equ 0                   ; bit of state: the point ended without a conversion

frames_data     udata_shr
state           res 1
ahead           res 1                   ; AHEAD or AHEAD_FIRST
sequence        res 1
groups          res 1                   ; groups of four points that remain in the frame
kept            res 1                   ; low byte of the previous sample: its bits that are not sent yet
packed          res 1
outgoing        res 1

; Measure one point; work is the routine that runs during the conversion.
measure macro   work
        call    point
        btfsc   state, HALTED
        goto    halted
        call    work
        call    converter_read
        endm

; Send W and add it to the CRC. 47 cycles.
emit    macro
        movwf   outgoing
        call    crc_add
        movf    outgoing, W
        call    line_send
        endm

frames_code     code
frames_start:
        banksel PR2
        movlw   TICK / 5 - 1
        movwf   PR2
        banksel T2CON
        movlw   (4 << TOUTPS0) | (1 << TMR2ON)  ; every fifth match counts
        movwf   T2CON
        return

frames_sweep:
        clrf    state
        clrf    sequence
        call    line_drain              ; from here on, only bytes of frames are in the transmit buffer
        btfss   line_flags, SWEEPING
        goto    halted                  ; ended before the first point: the generator is unchanged
        call    plan_first
        call    synth_load
        call    plan_next
        movlw   AHEAD
        movwf   ahead
        measure frame_open
frame:
        movlw   AHEAD
        movwf   ahead
        movlw   POINTS / 4
        movwf   groups
        goto    group_entry
group:
        measure pack_d
group_entry:
        measure pack_a
        measure pack_b
        measure pack_c
        decfsz  groups, F
        goto    group
        movlw   AHEAD_FIRST
        movwf   ahead
        measure frame_turn
        goto    frame
halted:
        goto    line_discard

; --- one point: from FQ_UD to the start of the conversion ---
point:
        clrwdt
        call    converter_arm
        call    synth_update
        bsf     T1CON, TMR1ON           ; start of the settling time
settle:
        btfss   line_flags, SWEEPING
        goto    point_halted
        btfsc   RCSTA, OERR
        call    line_watch
        movf    line_waiting, W
        subwf   ahead, W
        skpc
        goto    settle
        btfsc   PIR1, TMR1IF
        btfss   PIR1, TMR2IF
        goto    settle
        bcf     PIR1, TMR2IF            ; SETTLE_LEAD starts here
        call    synth_load
        call    plan_next
        bsf     ADCON0, GO
        return
point_halted:
        bsf     state, HALTED
        return

; --- packing and sending, during a conversion ---

; The end of one frame and the header of the next one.
frame_turn:
        call    pack_d
        movf    crc_high, W
        call    line_send
        movf    crc_low, W
        call    line_send
        incf    sequence, F
frame_open:
        movlw   0xA5
        call    line_send
        movlw   0x5A
        call    line_send
        movf    plan_crc, W
        movwf   crc_high
        movf    plan_crc + 1, W
        movwf   crc_low
        movf    sequence, W
        emit
        return

; Four samples of ten bits in five bytes: aaaaaaaa aabbbbbb bbbbcccc ccccccdd dddddddd
pack_a:
        movf    sample, W
        movwf   kept
        rrf     sample + 1, F
        rrf     sample, F
        rrf     sample + 1, F
        rrf     sample, W
        emit
        return
pack_b:
        swapf   sample + 1, W
        movwf   packed
        swapf   sample, W
        andlw   0x0F
        iorwf   packed, F
        rrf     kept, F
        rrf     kept, F
        rrf     kept, W
        andlw   0xC0
        iorwf   packed, F
        movf    sample, W
        movwf   kept
        movf    packed, W
        emit
        return
pack_c:
        swapf   kept, W
        andlw   0xF0
        movwf   packed
        movf    sample, W
        movwf   kept
        rlf     sample, F
        rlf     sample + 1, F
        rlf     sample, F
        rlf     sample + 1, W
        iorwf   packed, W
        emit
        return
pack_d:
        rlf     kept, F
        rlf     kept, W
        andlw   0xFC
        iorwf   sample + 1, W
        emit
        movf    sample, W
        emit
        return

        end
