; SPDX-License-Identifier: MIT
; The sweep: measures the points one by one and sends frames.
;
; Each point takes these steps, beginning with the FQ_UD pulse:
;   wait until the settling time is almost over and the transmit buffer has enough space
;   load the word of the next point; the generator uses it at the next FQ_UD
;   compute the word after that one
;   start the conversion
;   during the conversion, pack and send the previous sample
;   read the result
; The wait precedes loading, so if the sweep ends during the wait, no new word is loaded into the generator.
;
; Timer 2 ticks once per point, every 1 1/4 byte times on the serial line. A point that is fast enough starts its
; conversion on a tick, so that all such points settle for the same time. A slower point has already missed the tick
; and does not wait.
;
; frames_start   set up timer 2.                                                        uses W
; frames_sweep   sweep until SWEEPING is cleared, then discard the unsent bytes.        uses W, FSR

        include "board.inc"

        global  frames_start, frames_sweep

        extern  line_flags, line_waiting, line_send, line_watch, line_drain, line_discard
        extern  plan_crc, plan_first, plan_next
        extern  synth_load, synth_update
        extern  sample, converter_arm, converter_read
        extern  crc_high, crc_low, crc_add

; Maximum number of bytes in the transmit buffer (16) when a conversion starts. During a conversion, one or two bytes
; are queued; at the first point of a frame, seven (the last two of the old frame, its CRC, three of the new one). Only
; this point waits for the line, because it follows the largest frequency step and needs the most time to settle.
AHEAD           equ 14
AHEAD_FIRST     equ 3

TICK            equ BYTE_CYCLES * 5 / 4

HALTED          equ 0                   ; bit in state: the point ended without a conversion

frames_data     udata_shr
state           res 1
ahead           res 1                   ; AHEAD or AHEAD_FIRST
sequence        res 1
groups          res 1                   ; groups of four points remaining in the frame
kept            res 1                   ; low byte of the previous sample, with the bits not yet sent
packed          res 1
outgoing        res 1

; Measure one point; `work` is the routine to call during the conversion.
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
        movlw   (4 << TOUTPS0) | (1 << TMR2ON)  ; postscaler 5
        movwf   T2CON
        return

frames_sweep:
        clrf    state
        clrf    sequence
        call    line_drain              ; from here on, the transmit buffer contains only frame bytes
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

; Queues the end of one frame and the header of the next.
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

; Pack four ten-bit samples into five bytes: aaaaaaaa aabbbbbb bbbbcccc ccccccdd dddddddd
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
