// The page of a live graphic: the functions that playout hosts call, and the panel for a person who opens it.

/** @returns {LiveForm} */
function readForm() {
    const element = document.getElementById('zeltrans-form');
    return JSON.parse(element === null || element.textContent === null ? '' : element.textContent);
}

/**
 * The options in the page's address: play=1, edit=1, fit=pillar|fill|pixel, fade=IN or fade=IN,OUT in milliseconds.
 * @param {LiveForm} form  has the values of those that aren't given.
 */
function readOptions(form) {
    const address = new URLSearchParams(window.location.search);
    const fit = address.get('fit'), fade = /^(\d{1,6})(?:,(\d{1,6}))?$/.exec(address.get('fade') || '');
    return {
        plays: address.get('play') === '1',
        edits: address.get('edit') === '1',
        fit: fit === 'pillar' || fit === 'fill' || fit === 'pixel' ? fit : form.fit,
        fadeIn: fade === null ? form.fade.in : Number(fade[1]),
        fadeOut: fade === null ? form.fade.out : Number(fade[2] === undefined ? fade[1] : fade[2])
    };
}

class Template {
    /** @param {LiveForm} form */
    constructor(form) {
        this.options = readOptions(form);
        const canvas = document.createElement('canvas');
        document.body.appendChild(canvas);
        this.stage = new Stage(form, canvas);
        this.fader = new Fader(opacity => this.stage.setOpacity(opacity));
        /** @type {Panel | null} */
        this.panel = null;
        this.place();
        window.addEventListener('resize', () => this.place());
        if (this.options.edits) {
            this.openPanel();
        } else if (this.options.plays) {
            this.play();
        }
    }

    place() {
        const space = document.documentElement, panel = this.panel;
        const beside = panel === null ? 0 : panel.element.offsetWidth;
        this.stage.place(this.options.fit, space.clientWidth - beside, space.clientHeight);
    }

    /** @param {Map<string, string>} texts */
    update(texts) {
        this.stage.update(texts);
        this.stage.redraw();
        if (this.panel !== null) this.panel.refresh();
    }

    play() {
        this.fader.to(1, this.options.fadeIn);
    }

    stop() {
        this.fader.to(0, this.options.fadeOut);
    }

    openPanel() {
        this.panel = new Panel({
            stage: this.stage,
            update: texts => this.update(texts),
            play: () => this.play(),
            stop: () => this.stop()
        });
        this.place();
        this.play();
    }

    closePanel() {
        if (this.panel === null || this.options.edits) return;
        this.panel.close();
        this.panel = null;
        this.place();
    }
}

/** Whether a playout host may have opened the page. A host's calls, or play=1 in the address, also make it one. */
function mayBeHosted() {
    return window.top !== window || 'obsstudio' in window;
}

/**
 * Opens the panel when a person clicks into the page, or presses a key, before a host has called. A playout host sends
 * neither.
 * @param {Template} template
 * @returns {() => void}  ends the waiting.
 */
function waitForPerson(template) {
    const names = ['mousedown', 'touchstart', 'keydown'];
    const open = (/** @type {Event} */ event) => {
        if (!event.isTrusted) return;
        end();
        template.openPanel();
    };
    const title = document.title;
    const end = () => {
        document.title = title;
        names.forEach(name => window.removeEventListener(name, open));
    };
    document.title = title + ' (click to edit)';
    names.forEach(name => window.addEventListener(name, open));
    return end;
}

/** @param {Template} template */
function defineHostFunctions(template) {
    const waits = !template.options.edits && !template.options.plays && !mayBeHosted();
    const endWaiting = waits ? waitForPerson(template) : () => {};
    const define = (/** @type {string} */ name, /** @type {(data?: any) => void} */ act) => {
        /** @type {any} */ (window)[name] = (/** @type {any} */ data) => {
            try {
                endWaiting();
                template.closePanel();
                act(data);
            } catch (error) {
                console.error(error);
            }
        };
    };
    define('update', data => template.update(textsOf(data)));
    define('play', () => template.play());
    define('stop', () => template.stop());
    // The graphic has one step, which stays.
    define('next', () => {});
}

defineHostFunctions(new Template(readForm()));
