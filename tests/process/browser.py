#!/usr/bin/env python3
"""What a browser makes of a report page, as JSON: browser.py PAGE PROFILE KIND.

Drives headless Chromium over its debugging pipe, without network. The kind is still for a browser
without WebGL. With it, phone looks at the page on a narrow screen as well, use turns, moves and
zooms the view as a user would, and context takes the graphics away for a while.
"""
import base64
import json
import os
import subprocess
import sys
import time

from page_view import colours_of

PATIENCE = 60  # seconds, for anything that the page has to do


class Browser:
    def __init__(self, profile, flags):
        ours, theirs = os.pipe(), os.pipe()
        # Chromium reads from 3 and writes to 4.
        shell = 'exec chromium "$@" 3<&%d 4>&%d' % (ours[0], theirs[1])
        command = ['sh', '-c', shell, 'sh', '--headless=new', '--no-sandbox',
                   '--remote-debugging-pipe', '--disable-dev-shm-usage', '--no-first-run',
                   '--disable-crash-reporter', '--disable-background-networking',
                   '--host-resolver-rules=MAP * ~NOTFOUND', '--user-data-dir=' + profile]
        self.process = subprocess.Popen(command + flags + ['about:blank'],
                                        pass_fds=(ours[0], theirs[1]),
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(ours[0])
        os.close(theirs[1])
        self.output, self.input = ours[1], os.fdopen(theirs[0], 'rb')
        self.number, self.session, self.events, self.unread = 0, None, [], b''

    def message(self):
        while b'\0' not in self.unread:
            block = self.input.read1(1 << 20)
            if not block:
                sys.exit('the browser has ended')
            self.unread += block
        text, self.unread = self.unread.split(b'\0', 1)
        return json.loads(text)

    def call(self, method, **parameters):
        self.number += 1
        request = {'id': self.number, 'method': method, 'params': parameters}
        if self.session:
            request['sessionId'] = self.session
        os.write(self.output, json.dumps(request).encode() + b'\0')
        while True:
            answer = self.message()
            if answer.get('id') == self.number:
                if 'error' in answer:
                    sys.exit('%s: %s' % (method, answer['error']['message']))
                return answer['result']
            self.events.append(answer)

    def open(self, path):
        target = self.call('Target.createTarget', url='about:blank')['targetId']
        self.session = self.call('Target.attachToTarget', targetId=target,
                                 flatten=True)['sessionId']
        for domain in ('Page', 'Runtime', 'Log', 'Network'):
            self.call(domain + '.enable')
        self.call('Network.emulateNetworkConditions', offline=True, latency=0,
                  downloadThroughput=0, uploadThroughput=0)
        self.call('Page.navigate', url='file://' + path)
        self.until('document.readyState === "complete"')

    def value(self, expression):
        answer = self.call('Runtime.evaluate', expression=expression, returnByValue=True,
                           awaitPromise=True)
        if 'exceptionDetails' in answer:
            sys.exit('%s: %s' % (expression, answer['exceptionDetails']['text']))
        return answer['result'].get('value')

    def until(self, expression):
        end = time.monotonic() + PATIENCE
        while not self.value(expression):
            if time.monotonic() > end:
                sys.exit('never: ' + expression)
            time.sleep(0.05)

    def picture(self):
        """The picture's inner part as it is on the screen, as bytes of a PNG file."""
        # The frame that was asked for last is on the screen two frames later.
        self.value('new Promise(done => requestAnimationFrame(() => requestAnimationFrame('
                   '() => requestAnimationFrame(done))))')
        box = self.box()
        clip = {'x': box[0] + 8, 'y': box[1] + 8, 'width': box[2] - 16, 'height': box[3] - 16,
                'scale': 1}
        return base64.b64decode(self.call('Page.captureScreenshot', clip=clip)['data'])

    def settled(self, wanted=lambda picture: True):
        """The picture once it does not change any more and is as wanted, or at last anyhow."""
        end, last = time.monotonic() + PATIENCE / 3, None
        while time.monotonic() < end:
            picture = self.picture()
            if picture == last and wanted(picture):
                break
            last = picture
        return picture

    def box(self):
        return self.value('(() => { const b = document.getElementById("picture")'
                          '.getBoundingClientRect(); return [b.x, b.y, b.width, b.height]; })()')

    def mouse(self, kind, x, y, **more):
        self.call('Input.dispatchMouseEvent', type=kind, x=x, y=y, **more)

    def drag(self, button, modifiers=0):
        left, top, width, height = self.box()
        x, y, buttons = left + width / 2, top + height / 2, {'left': 1, 'right': 2}[button]
        self.mouse('mousePressed', x, y, button=button, buttons=buttons, clickCount=1)
        for step in (1, 2, 3):
            self.mouse('mouseMoved', x + 15 * step, y + 8 * step, button=button, buttons=buttons,
                       modifiers=modifiers)
        self.mouse('mouseReleased', x + 45, y + 24, button=button, clickCount=1)

    def wheel(self, delta):
        left, top, width, height = self.box()
        self.mouse('mouseWheel', left + width / 3, top + height / 3, deltaX=0, deltaY=delta)

    def key(self, key, modifiers=0):
        text = {'text': key} if len(key) == 1 else {}
        for kind in ('keyDown', 'keyUp'):
            self.call('Input.dispatchKeyEvent', type=kind, key=key, modifiers=modifiers,
                      **(text if kind == 'keyDown' else {}))

    def pinch(self):
        left, top, width, height = self.box()
        x, y = left + width / 2, top + height / 2
        for kind, apart in (('touchStart', 40), ('touchMove', 60), ('touchMove', 90)):
            self.call('Input.dispatchTouchEvent', type=kind,
                      touchPoints=[{'x': x - apart, 'y': y, 'id': 1},
                                   {'x': x + apart, 'y': y, 'id': 2}])
        self.call('Input.dispatchTouchEvent', type='touchEnd', touchPoints=[])

    def close(self):
        self.session = None
        self.call('Browser.close')
        self.process.wait()


def state(browser):
    """What the page says of the picture, and which of the two can be seen."""
    found = browser.value('({...document.getElementById("picture").dataset})')
    visible = '(e => e ? getComputedStyle(e).visibility : "none")(document.querySelector("%s"))'
    found['canvas'] = browser.value(visible % '#picture canvas')
    found['image'] = browser.value(visible % '#picture img')
    found['hint'] = browser.value('!(document.getElementById("picture-hint") || {hidden: true})'
                                  '.hidden')
    return found


def use(browser):
    """Whether each way to use the view changes what is seen, and Home takes it back."""
    first = browser.settled()
    changes = {}
    ways = {
        'drag': lambda: browser.drag('left'),
        'right drag': lambda: browser.drag('right'),
        'shift drag': lambda: browser.drag('left', modifiers=8),
        'wheel': lambda: browser.wheel(-120),
        'wheel back': lambda: browser.wheel(120),
        'pinch': browser.pinch,
        'left': lambda: browser.key('ArrowLeft'),
        'right': lambda: browser.key('ArrowRight'),
        'up': lambda: browser.key('ArrowUp'),
        'down': lambda: browser.key('ArrowDown'),
        'shift left': lambda: browser.key('ArrowLeft', modifiers=8),
        'plus': lambda: browser.key('+'),
        'minus': lambda: browser.key('-'),
    }
    seen = []
    for name, act in ways.items():
        browser.value('document.querySelector("#picture canvas").focus()')
        act()
        picture = browser.settled(lambda picture: picture != first)
        browser.key('Home')
        changes[name] = 'the same' if picture == first else 'changed'
        if browser.settled(lambda picture: picture == first) != first:
            changes[name] += ', and Home does not take it back'
        if name != 'shift drag':  # which is what the right button does
            seen.append(picture)
    browser.wheel(-120)
    scrolled = browser.value('window.scrollY')
    return {'ways': changes, 'different': len(set(seen)), 'scrolled': scrolled}


def lose(browser):
    """The state after the context was lost, and after it came back."""
    browser.key('Home')
    before = browser.settled()
    browser.value('window.lost = document.querySelector("#picture canvas").getContext("webgl2")'
                  '.getExtension("WEBGL_lose_context"), lost.loseContext()')
    browser.until('document.getElementById("picture").dataset.state !== "live"')
    lost = state(browser)
    browser.value('lost.restoreContext()')
    browser.until('document.getElementById("picture").dataset.state === "live"')
    same = browser.settled(lambda picture: picture == before) == before
    return {'lost': lost, 'back': state(browser), 'same': same}


def main():
    page, profile, kind = sys.argv[1:]
    flags = (['--disable-3d-apis'] if kind == 'still' else
             ['--use-gl=angle', '--use-angle=swiftshader', '--enable-unsafe-swiftshader'])
    browser = Browser(profile, flags)
    browser.open(page)
    browser.call('Emulation.setDeviceMetricsOverride', width=500, height=900,
                 deviceScaleFactor=1, mobile=False)
    found = {'state': state(browser)}
    if kind == 'use':
        found['use'] = use(browser)
    elif kind == 'context':
        found['context'] = lose(browser)
    else:
        found['colours'] = colours_of(browser.settled())
    if kind == 'phone':
        browser.call('Emulation.setDeviceMetricsOverride', width=390, height=844,
                     deviceScaleFactor=2, mobile=True)
        browser.settled()
        found['phone'] = browser.value('(c => [c.clientWidth * 2, c.width, c.clientHeight * 2, '
                                       'c.height, document.documentElement.scrollWidth])'
                                       '(document.querySelector("#picture canvas"))')
    urls = [e['params']['request']['url'] for e in browser.events
            if e.get('method') == 'Network.requestWillBeSent']
    found['requests'] = [u[:60] for u in urls
                         if u != 'file://' + page and not u.startswith('data:')]
    found['complaints'] = [
        e['params'] for e in browser.events
        if e.get('method') == 'Runtime.exceptionThrown' or
        (e.get('method') == 'Log.entryAdded' and e['params']['entry']['source'] == 'security') or
        (e.get('method') == 'Runtime.consoleAPICalled' and e['params']['type'] == 'error')]
    browser.close()
    json.dump(found, sys.stdout)


if __name__ == '__main__':
    main()
