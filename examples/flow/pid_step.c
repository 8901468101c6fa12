/* One step of a PID controller whose integral and output stay within limits. */
typedef struct { float integral, error; } memory;

static float limited(float x, float limit)
{
    return x > limit ? limit : x < -limit ? -limit : x;
}

float pid_step(float wanted, float measured, memory now, memory *next)
{
    const float kp = 1.2f, ki = 0.05f, kd = 0.4f;
    float error = wanted - measured;
    float integral = limited(now.integral + error, 100.0f);

    next->integral = integral;
    next->error = error;
    return limited(kp * error + ki * integral + kd * (error - now.error), 10.0f);
}
