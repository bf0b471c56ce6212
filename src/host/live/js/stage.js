// A live graphic on a canvas.

/**
 * The place of a picture in a space, in pixels of the page. A space of the picture's own size has it pixel by pixel.
 * @param {LiveForm} form
 * @param {Fit} fit
 * @param {number} width
 * @param {number} height
 */
function placeOf(form, fit, width, height) {
    if (fit === 'pixel' || (width === form.width && height === form.height) || width <= 0 || height <= 0) {
        const left = Math.max(0, Math.floor((width - form.width) / 2));
        // An even number of lines, which keeps the interlaced fields.
        const top = Math.max(0, Math.floor((height - form.height) / 4) * 2);
        return {left, top, width: form.width, height: form.height};
    }
    if (fit === 'fill') return {left: 0, top: 0, width, height};
    const aspect = form.pixelAspect[0] / form.pixelAspect[1];
    const scale = Math.min(width / (form.width * aspect), height / form.height);
    const own = {
        width: Math.min(width, Math.round(form.width * aspect * scale)),
        height: Math.min(height, Math.round(form.height * scale))
    };
    return {
        left: Math.floor((width - own.width) / 2),
        top: Math.floor((height - own.height) / 4) * 2,
        width: own.width,
        height: own.height
    };
}

/** The texts of a graphic and its picture. Nothing is drawn before it is shown. */
class Stage {
    /**
     * @param {LiveForm} form
     * @param {HTMLCanvasElement} canvas
     */
    constructor(form, canvas) {
        this.form = form;
        this.canvas = canvas;
        this.glyphs = new GlyphStore(form);
        this.picture = new Picture(form.width, form.height);
        /** @type {CanvasRenderingContext2D | null} */
        this.context = null;
        /** @type {HTMLImageElement | null} */
        this.still = null;
        this.isDrawn = false;
        /**
         * The rows to draw; null if they are drawn.
         * @type {Row[] | null}
         */
        this.rows = null;
        /**
         * By the field's index.
         * @type {Map<number, string>}
         */
        this.values = new Map();
        /**
         * What is said about the present texts.
         * @type {FieldNote[]}
         */
        this.notes = [];
        this.clear();
        canvas.width = form.width;
        canvas.height = form.height;
        canvas.style.position = 'absolute';
        this.setOpacity(0);
        /**
         * Resolved when the picture of an RGBA file can be drawn.
         * @type {Promise<void>}
         */
        this.ready = form.picture ? this.loadPicture(form.picture) : Promise.resolve();
    }

    /**
     * @param {string} address
     * @returns {Promise<void>}
     */
    loadPicture(address) {
        return new Promise(resolve => {
            const image = document.createElement('img');
            image.onload = () => {
                this.still = image;
                if (this.isDrawn) this.draw();
                resolve();
            };
            image.onerror = () => resolve();
            image.src = address;
        });
    }

    /** Gives all fields the texts that they have in the message. */
    clear() {
        this.values = new Map();
        this.apply(new Map());
    }

    /**
     * Sets texts; draw() shows them. Fields that aren't named keep theirs, as do fields for which a text has a fault.
     * What is said about the texts goes to the console, too.
     * @param {Map<string, string>} texts  by key.
     */
    update(texts) {
        const values = new Map(this.values);
        texts.forEach((text, key) => {
            const field = findField(this.form.fields, key);
            if (field >= 0) values.set(field, text);
        });
        if (texts.size === 0) return;
        this.apply(values);
        for (const note of this.notes) console.warn(this.form.fields[note.field].key + ': ' + note.text);
    }

    /** @param {Map<number, string>} values */
    apply(values) {
        /** @type {FieldNote[]} */
        let faults = [];
        let filled = fillFields(this.form, values);
        while (filled.faults.length > 0) {
            faults = faults.concat(filled.faults);
            filled.faults.forEach(fault => this.takeBack(values, fault.field));
            filled = fillFields(this.form, values);
        }
        this.values = values;
        this.rows = filled.rows;
        this.notes = faults.concat(filled.notes);
    }

    /**
     * Gives a field the text that it had before; if that is the one with the fault, the text of the message.
     * @param {Map<number, string>} values
     * @param {number} field
     */
    takeBack(values, field) {
        const before = this.values.get(field);
        if (before !== undefined && before !== values.get(field)) {
            values.set(field, before);
        } else {
            values.delete(field);
        }
    }

    /**
     * Brings the picture up to date.
     * @returns {Box | null}  the part that has changed.
     */
    compose() {
        if (this.rows === null) return null;
        const rows = new Placer(this.form, this.glyphs).place(this.rows);
        this.rows = null;
        return this.picture.show(rows);
    }

    /** Draws what has changed on the canvas. */
    draw() {
        this.isDrawn = true;
        if (!this.context) this.context = this.canvas.getContext('2d');
        if (!this.context) return;
        if (this.still !== null) {
            this.context.clearRect(0, 0, this.form.width, this.form.height);
            this.context.drawImage(this.still, 0, 0);
        }
        const changed = this.compose();
        if (changed === null) return;
        const bytes = new Uint8ClampedArray(this.picture.pixels.buffer);
        this.context.putImageData(new ImageData(bytes, this.form.width, this.form.height), 0, 0, changed.left,
                                  changed.top, changed.right - changed.left, changed.bottom - changed.top);
    }

    /** Draws the texts if they are in the picture already. */
    redraw() {
        if (this.isDrawn) this.draw();
    }

    /** @param {number} opacity  0 to 1. */
    setOpacity(opacity) {
        if (opacity > 0 && !this.isDrawn) this.draw();
        this.canvas.style.opacity = String(opacity);
        this.canvas.style.display = opacity > 0 ? 'block' : 'none';
    }

    /**
     * Places the canvas in a space of this size, in pixels of the page.
     * @param {Fit} fit
     * @param {number} width
     * @param {number} height
     */
    place(fit, width, height) {
        const place = placeOf(this.form, fit, width, height), style = this.canvas.style;
        style.left = place.left + 'px';
        style.top = place.top + 'px';
        style.width = place.width + 'px';
        style.height = place.height + 'px';
    }
}
