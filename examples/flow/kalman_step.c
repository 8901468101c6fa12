/* One step of a Kalman filter for position and speed from measured positions. The state and its covariance (symmetric:
   p11, p12, p22) stand outside. */
typedef struct { float position, speed, p11, p12, p22; } track;

track kalman_step(track now, float measured, float dt, float process_noise, float sensor_noise)
{
    /* Predict. */
    float position = now.position + dt * now.speed;
    float p11 = now.p11 + dt * (2 * now.p12 + dt * now.p22) + process_noise;
    float p12 = now.p12 + dt * now.p22;
    float p22 = now.p22 + process_noise;
    /* Correct. */
    float innovation = measured - position;
    float gain = 1.0f / (p11 + sensor_noise);
    float k1 = p11 * gain, k2 = p12 * gain;
    track next;

    next.position = position + k1 * innovation;
    next.speed = now.speed + k2 * innovation;
    next.p11 = p11 - k1 * p11;
    next.p12 = p12 - k1 * p12;
    next.p22 = p22 - k2 * p12;
    return next;
}
