// How strongly the picture is shown, from 0 to 1, by time.

/** A change of the opacity at an even speed. Times are in milliseconds. */
class Fade {
    /**
     * @param {number} from
     * @param {number} to
     * @param {number} start
     * @param {number} duration  of a change from 0 to 1. One from a value in between takes its share of it.
     */
    constructor(from, to, start, duration) {
        this.from = from;
        this.to = to;
        this.start = start;
        this.duration = duration * Math.abs(to - from);
    }

    /** @param {number} time */
    at(time) {
        if (time >= this.start + this.duration) return this.to;
        return this.from + (this.to - this.from) * Math.max(0, time - this.start) / this.duration;
    }

    /** @param {number} time */
    isOver(time) {
        return time >= this.start + this.duration;
    }
}

/**
 * A picture that doesn't change its opacity.
 * @param {number} opacity
 */
function steady(opacity) {
    return new Fade(opacity, opacity, 0, 0);
}

/** Fades in real time. */
class Fader {
    /** @param {(opacity: number) => void} show */
    constructor(show) {
        this.show = show;
        this.fade = steady(0);
        /** @type {() => void} */
        this.finish = () => {};
        this.frame = 0;
        this.timer = 0;
    }

    /**
     * Fades from the present opacity; a fade that is under way ends here.
     * @param {number} opacity
     * @param {number} duration  in milliseconds.
     * @returns {Promise<void>}  resolved when the fade is over, or replaced by another one.
     */
    to(opacity, duration) {
        const now = performance.now();
        const present = this.fade.at(now);
        this.stop();
        this.fade = new Fade(present, opacity, now, duration);
        if (this.fade.isOver(now)) {
            this.show(opacity);
            return Promise.resolve();
        }
        return new Promise(resolve => {
            this.finish = resolve;
            const step = () => {
                this.frame = requestAnimationFrame(step);
                this.show(this.fade.at(performance.now()));
            };
            step();
            // A page that isn't painted gets no frames, and the fade ends nevertheless.
            this.timer = window.setTimeout(() => {
                this.stop();
                this.fade = steady(opacity);
                this.show(opacity);
            }, this.fade.duration);
        });
    }

    /** Ends a fade where it is. */
    stop() {
        this.fade = steady(this.fade.at(performance.now()));
        if (this.frame !== 0) cancelAnimationFrame(this.frame);
        window.clearTimeout(this.timer);
        this.frame = 0;
        this.finish();
        this.finish = () => {};
    }
}
