// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#include <norvel/widgets/recorder/RecorderWgt.h>

#include <norvel/widgets/recorder/Qt5AudioRecorder.h>
#include <norvel/widgets/recorder/RecorderWgtForm.h>

#include <QComboBox>
#include <QCoreApplication>
#include <QCursor>
#include <QHideEvent>
#include <QLabel>
#include <QListView>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QTimer>

#include <limits>

namespace {

constexpr int tickMs = 1000;
constexpr int recordingHeight = 220;
constexpr int idleHeight = 540;

const char* const startStyle = "QPushButton{border-image: url(:/images/recorder/start.png) ;}";
const char* const stopStyle = "QPushButton{border-image: url(:/images/recorder/stop.png) ;}";

/// The integer part of a number, which is not negative; the largest integer when it is too large.
int integerPart(double number)
{
    constexpr int largest = std::numeric_limits<int>::max();
    return number < static_cast<double>(largest) ? static_cast<int>(number) : largest;
}

QString twoDigits(const QString& text, int number)
{
    return text.arg(number, 2, 10, QLatin1Char('0'));
}

bool isWithin(const QObject* object, const QObject* ancestor)
{
    while (object && object != ancestor)
        object = object->parent();
    return object;
}

/// Keeps events from a family that is being destroyed, but for one child that waits for some. The
/// ancestors are no more what their slots and virtual functions take them for.
class DyingFamily : public QObject
{
public:
    explicit DyingFamily(const QObject& child)
        : m_child(&child)
    {
        // Who is deleting its children has nulls among them.
        const QObject* ancestor = child.parent();
        while (ancestor && ancestor->children().contains(nullptr)) {
            m_eldest = ancestor;
            ancestor = ancestor->parent();
        }
        if (m_eldest)
            QCoreApplication::instance()->installEventFilter(this);
    }

    bool eventFilter(QObject* receiver, QEvent*) override
    {
        return isWithin(receiver, m_eldest) && !isWithin(receiver, m_child);
    }

private:
    const QObject* m_child;
    const QObject* m_eldest = nullptr;
};

} // namespace

// NOLINTNEXTLINE(performance-unnecessary-value-param): hosts hand over the path by value.
RecorderWgt::RecorderWgt(QString outputPath, QWidget* parent)
    : QDialog(parent)
    , ui(std::make_unique<RecorderWgtForm>())
{
    ui->setupUi(this);
    setWindowTitle(RecorderWgtForm::dialogTitle());
    ui->btnRecord->setCursor(QCursor(Qt::PointingHandCursor));
    connect(ui->btnRecord, &QPushButton::clicked, this, &RecorderWgt::playRecord);
    ui->cbDevice->setView(new QListView);
    ui->cbDevice->setFocus();
    connect(ui->horizontalSlider, &QSlider::valueChanged, this, &RecorderWgt::updateVolumeValue);
    connect(ui->spinBox, QOverload<int>::of(&QSpinBox::valueChanged), this,
            &RecorderWgt::updateVolumeValue);

    timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, &RecorderWgt::onTimer);
    recorder = new Qt5AudioRecorder(this);
    connect(recorder, &Qt5AudioRecorder::updateProgressBar, this, &RecorderWgt::showLevel);

    ui->cbDevice->addItems(recorder->audioInputs());
    recorder->setupRecorder(ui->cbDevice->currentText());
    recorder->setOutputFile(outputPath);
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this,
            &RecorderWgt::endRecording);
    resize(326, 385);
}

RecorderWgt::~RecorderWgt()
{
    const DyingFamily family(*this);
    recorder->finishRecord();
}

int RecorderWgt::exec()
{
    const QPointer<RecorderWgt> self(this);
    const int result = QDialog::exec();
    // The application quits without hiding the dialog, and a host may have deleted it.
    if (self)
        endRecording();
    return result;
}

void RecorderWgt::done(int result)
{
    if (endRecording())
        QDialog::done(result);
}

void RecorderWgt::setVisible(bool visible)
{
    if (visible || endRecording())
        QDialog::setVisible(visible);
}

void RecorderWgt::closeEvent(QCloseEvent* event)
{
    if (endRecording())
        QDialog::closeEvent(event);
}

void RecorderWgt::hideEvent(QHideEvent* event)
{
    // With its parent; nobody waits in the middle of that.
    if (!event->spontaneous())
        release();
    QDialog::hideEvent(event);
}

/// Returns whether the dialog is still there: a host may delete it during the wait.
bool RecorderWgt::endRecording()
{
    const QPointer<RecorderWgt> self(this);
    recorder->finishRecord();
    // Only now, or the dialog would grow before it goes.
    if (self)
        release();
    return !self.isNull();
}

/// Releases the button, as a click that stops does.
void RecorderWgt::release()
{
    if (!ui->btnRecord->isChecked())
        return;
    ui->btnRecord->setChecked(false);
    playRecord();
}

void RecorderWgt::playRecord()
{
    const bool isRecording = ui->btnRecord->isChecked();
    ui->btnRecord->setStyleSheet(QLatin1String(isRecording ? stopStyle : startStyle));
    ui->lblRecorderTips->setText(isRecording ? RecorderWgtForm::recordingTip()
                                             : RecorderWgtForm::idleTip());
    timer->start(tickMs);
    const QPointer<RecorderWgt> self(this);
    if (isRecording) {
        recorder->startRecord();
    } else {
        seconds = 0;
        ui->lblDuration->setText(RecorderWgtForm::noDuration());
        timer->stop();
        recorder->stopRecord();
    }
    if (self)
        showParts();
}

/// Shows all parts, or those of a recording alone; which it is may have changed during a wait.
void RecorderWgt::showParts()
{
    const bool isRecording = ui->btnRecord->isChecked();
    ui->wgtMiddle->setVisible(!isRecording);
    ui->wgtBottom->setVisible(!isRecording);
    setFixedHeight(isRecording ? recordingHeight : idleHeight);
}

void RecorderWgt::updateVolumeValue(int value)
{
    if (sender() == ui->horizontalSlider)
        ui->spinBox->setValue(value);
    else
        ui->horizontalSlider->setValue(value);
    if (volumeTarget)
        ui->horizontalSlider->maximum();
}

void RecorderWgt::onTimer()
{
    seconds += 1;
    const int hours = seconds / 3600;
    const int minutes = (seconds - 3600 * hours) / 60;
    const QString text = twoDigits(QStringLiteral("%1:%2:%3"), hours);
    ui->lblDuration->setText(twoDigits(twoDigits(text, minutes), seconds % 60));
}

void RecorderWgt::showLevel(double level)
{
    // The bar goes to 100 and ignores what is more: on a wide one a loud input stands still.
    ui->progressBar->setValue(integerPart(ui->progressBar->width() * level));
}
