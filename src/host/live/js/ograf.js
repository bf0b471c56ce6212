// The graphic as an OGraf element. Hosts call its methods without a document, without data and while others run.

/**
 * An action at a time in milliseconds, with the texts in its data.
 * @typedef {{timestamp: number, type: string, params: any, texts: Map<string, string> | null}} Action
 *
 * What is shown: the texts in the order in which they came, the opacity by time, and the step, which is -1 before the
 * first one.
 * @typedef {{texts: Map<string, string>[], fade: Fade, step: number}} GraphicState
 */

/** The number of steps in the manifest. */
const kSteps = 1;

const kPlay = 'playAction', kStop = 'stopAction';

/**
 * @param {number} timestamp
 * @param {any} type
 * @param {any} params
 * @returns {Action}
 */
function actionOf(timestamp, type, params) {
    const own = Object.assign({}, params);
    return {timestamp, type: String(type), params: own, texts: own.data ? textsOf(own.data) : null};
}

/**
 * The actions of a schedule.
 * @param {any} schedule
 */
function actionsOf(schedule) {
    const entries = (Array.isArray(schedule) ? schedule : []).filter(entry => entry && entry.action);
    return entries.map(entry => actionOf(Number(entry.timestamp) || 0, entry.action.type, entry.action.params));
}

/**
 * In the order of their times; actions of the same time keep theirs.
 * @param {Action[]} actions
 */
function sortedActions(actions) {
    return actions.map((action, n) => ({action, n}))
        .sort((a, b) => a.action.timestamp - b.action.timestamp || a.n - b.n)
        .map(entry => entry.action);
}

/**
 * The step after a play or a stop action: -1 at the end, where the graphic is no longer shown.
 * @param {Action} action
 * @param {number} step  the present one.
 */
function stepAfter(action, step) {
    if (action.type === kStop) return -1;
    const to = action.params.goto, delta = action.params.delta;
    const target = typeof to === 'number' && to >= 0 ? to : step + (typeof delta === 'number' ? delta : 1);
    return target >= kSteps ? -1 : Math.max(0, target);
}

/**
 * Milliseconds of a play or a stop action.
 * @param {Action} action
 * @param {number} step  after it.
 */
function durationOf(action, step) {
    if (action.params.skipAnimation === true) return 0;
    return step >= 0 ? zeltransForm.fade.in : zeltransForm.fade.out;
}

/**
 * The state after an action of a schedule.
 * @param {GraphicState} state
 * @param {Action} action
 * @returns {GraphicState}
 */
function stateAfter(state, action) {
    const texts = action.texts === null ? state.texts : state.texts.concat(action.texts);
    if (action.type !== kPlay && action.type !== kStop) return {texts, fade: state.fade, step: state.step};
    const step = stepAfter(action, state.step), time = action.timestamp;
    return {texts, fade: new Fade(state.fade.at(time), step >= 0 ? 1 : 0, time, durationOf(action, step)), step};
}

/** A loaded graphic: its canvas in the element, and what is shown on it. */
class LoadedGraphic {
    /**
     * @param {HTMLElement} host
     * @param {any} params  of load.
     */
    constructor(host, params) {
        this.host = host;
        this.space = document.createElement('div');
        Object.assign(this.space.style, {
            position: 'absolute',
            left: '0',
            top: '0',
            width: '100%',
            height: '100%',
            pointerEvents: 'none'
        });
        const canvas = document.createElement('canvas');
        this.space.appendChild(canvas);
        this.stage = new Stage(zeltransForm, canvas);
        this.fader = new Fader(opacity => this.stage.setOpacity(opacity));
        const characteristics = params.renderCharacteristics || {};
        this.resolution = characteristics.resolution || {};
        this.isRealTime = params.renderType !== 'non-realtime';
        /**
         * Before all actions of the schedule.
         * @type {GraphicState}
         */
        this.first = {texts: [textsOf(params.data)], fade: steady(0), step: -1};
        /** The step in real time. */
        this.step = -1;
        /** @type {Action[]} */
        this.schedule = [];
        /**
         * Actions that were called while a time was shown.
         * @type {Action[]}
         */
        this.called = [];
        this.time = 0;
        /**
         * The texts that the stage has.
         * @type {Map<string, string>[]}
         */
        this.texts = [];
        this.setTexts(this.first.texts);
        host.appendChild(this.space);
        this.place();
        this.observer = 'ResizeObserver' in window ? new ResizeObserver(() => this.place()) : null;
        if (this.observer !== null) this.observer.observe(this.space);
    }

    /** Places the canvas: in the element's own box, or in the box around it, or in the resolution of the host. */
    place() {
        const host = this.host, space = this.space;
        if (host.clientWidth > 0 && host.clientHeight > 0 && getComputedStyle(host).position === 'static')
            host.style.position = 'relative';
        const isLaidOut = space.clientWidth > 0 && space.clientHeight > 0;
        const width = isLaidOut ? space.clientWidth : Number(this.resolution.width) || 0;
        const height = isLaidOut ? space.clientHeight : Number(this.resolution.height) || 0;
        this.stage.place(zeltransForm.fit, width, height);
    }

    /**
     * Gives the stage these texts, one set after the other. Sets that it has already aren't set again.
     * @param {Map<string, string>[]} texts
     */
    setTexts(texts) {
        let known = 0;
        while (known < this.texts.length && this.texts[known] === texts[known]) ++known;
        if (known < this.texts.length) {
            this.stage.clear();
            known = 0;
        }
        this.texts = texts;
        texts.slice(known).forEach(each => this.stage.update(each));
        this.stage.redraw();
    }

    /**
     * Does an action now: in real time, or at the time that is shown.
     * @param {string} type
     * @param {any} params
     * @returns {Promise<number>}  the step after it; resolved when the fade is over.
     */
    async act(type, params) {
        const action = actionOf(this.time, type, params);
        if (!this.isRealTime) {
            this.called.push(action);
            return this.showTime();
        }
        if (action.texts !== null) {
            this.stage.update(action.texts);
            this.stage.redraw();
        }
        if (type === kPlay || type === kStop) {
            const step = this.step = stepAfter(action, this.step);
            await this.fader.to(step >= 0 ? 1 : 0, durationOf(action, step));
            return step;
        }
        return this.step;
    }

    /**
     * Shows the picture of a time, whatever was shown before. What was done in real time counts as done before it.
     * @param {number} time  in milliseconds.
     */
    goTo(time) {
        if (this.isRealTime) {
            this.isRealTime = false;
            this.fader.stop();
            /** @type {Map<string, string>} */
            const texts = new Map();
            this.stage.values.forEach((text, field) => texts.set(zeltransForm.fields[field].address, text));
            this.first = {texts: [texts], fade: steady(this.step >= 0 ? 1 : 0), step: this.step};
        }
        this.time = time;
        this.place();
        this.showTime();
    }

    /** @returns {number}  the step. */
    showTime() {
        const actions = sortedActions(this.schedule.concat(this.called));
        const state = actions.filter(action => action.timestamp <= this.time).reduce(stateAfter, this.first);
        this.setTexts(state.texts);
        this.stage.setOpacity(state.fade.at(this.time));
        return state.step;
    }

    unload() {
        if (this.observer !== null) this.observer.disconnect();
        this.fader.stop();
        if (this.space.parentNode !== null) this.space.parentNode.removeChild(this.space);
    }
}

/** What a host gets for a call that was done. */
function done() {
    return {statusCode: 200};
}

function notLoaded() {
    return {statusCode: 400, statusMessage: 'The graphic is not loaded.'};
}

export default class extends HTMLElement {
    constructor() {
        super();
        /** @type {LoadedGraphic | null} */
        this.loadedGraphic = null;
    }

    connectedCallback() {
        if (this.loadedGraphic !== null) this.loadedGraphic.place();
    }

    /** @param {any} params  data, renderType and renderCharacteristics; all of them may be missing. */
    async load(params) {
        if (this.loadedGraphic !== null) this.loadedGraphic.unload();
        const graphic = new LoadedGraphic(this, params || {});
        this.loadedGraphic = graphic;
        await graphic.stage.ready;
        return done();
    }

    async dispose() {
        if (this.loadedGraphic !== null) this.loadedGraphic.unload();
        this.loadedGraphic = null;
    }

    /** @param {any} params  data. */
    async updateAction(params) {
        if (this.loadedGraphic === null) return notLoaded();
        await this.loadedGraphic.act('updateAction', params);
        return done();
    }

    /** @param {any} params  delta or goto, skipAnimation; SPX adds data. */
    async playAction(params) {
        if (this.loadedGraphic === null) return notLoaded();
        const step = await this.loadedGraphic.act(kPlay, params);
        return {statusCode: 200, currentStep: step >= 0 ? step : undefined};
    }

    /** @param {any} params  skipAnimation. */
    async stopAction(params) {
        if (this.loadedGraphic === null) return notLoaded();
        await this.loadedGraphic.act(kStop, params);
        return done();
    }

    /** The manifest has no custom actions. */
    async customAction() {
        return this.loadedGraphic === null ? notLoaded() : done();
    }

    /** @param {any} params  timestamp in milliseconds. */
    async goToTime(params) {
        if (this.loadedGraphic === null) return notLoaded();
        this.loadedGraphic.goTo(Number((params || {}).timestamp) || 0);
        await this.loadedGraphic.stage.ready;
        return done();
    }

    /** @param {any} params  the schedule, which replaces the last one. */
    async setActionsSchedule(params) {
        if (this.loadedGraphic !== null) this.loadedGraphic.schedule = actionsOf((params || {}).schedule);
    }
}
